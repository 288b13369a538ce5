#include <filesystem>
#include <fstream>
#include <string>
#include <variant>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "entry/ApplicationModule.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

using Layout = ApplicationModule::Layout;

class ApplicationModuleTest : public testing::TestWithParam<Layout> {
protected:
    void put(const std::filesystem::path& place) {
        std::filesystem::create_directories(place.parent_path());
        std::filesystem::copy_file(CORVANE_TEST_MODULE, place);
    }

    /// The status that the module's application ends with.
    [[nodiscard]] int statusOfModule() const {
        const auto module = ApplicationModule::load(executable, GetParam());
        const auto* main = std::get_if<ApplicationModule::Main>(&module);
        if (main == nullptr) {
            ADD_FAILURE() << std::get<std::string>(module);
            return 0;
        }
        return (*main)(3, nullptr);
    }

    [[nodiscard]] std::string problem() const {
        const auto module = ApplicationModule::load(executable, GetParam());
        const auto* text = std::get_if<std::string>(&module);
        return text == nullptr ? "no problem" : *text;
    }

    TemporaryFolder folder;
    std::filesystem::path executable = folder.path() / "programs" / "corvane";
    std::filesystem::path beside = executable.parent_path() / GetParam().fileName;
    std::filesystem::path installed = folder.path() / GetParam().installedFolder / GetParam().fileName;
};

TEST_P(ApplicationModuleTest, IsFoundBesideTheExecutable) {
    put(beside);
    EXPECT_EQ(statusOfModule(), 23);
}

TEST_P(ApplicationModuleTest, IsFoundWhereItIsInstalled) {
    put(installed);
    EXPECT_EQ(statusOfModule(), 23);
}

TEST_P(ApplicationModuleTest, IsMissedInWords) {
    EXPECT_EQ(problem(), "the application is not installed: there is no " + std::string(GetParam().fileName) +
                             " beside " + executable.string() + " or in " + installed.parent_path().string());
}

TEST_P(ApplicationModuleTest, TellsWhyItCannotBeLoaded) {
    put(installed);
    std::ofstream(installed) << "no program at all";
    // What follows is the system's own, which names the file somewhere.
    EXPECT_THAT(problem(), testing::AllOf(testing::StartsWith("the application cannot be loaded: "),
                                          testing::HasSubstr(installed.string())));
}

INSTANTIATE_TEST_SUITE_P(Layouts, ApplicationModuleTest,
                         testing::Values(ApplicationModule::linuxLayout, ApplicationModule::macLayout),
                         [](const auto& instance) {
                             const bool isMac =
                                 instance.param.fileName == ApplicationModule::macLayout.fileName;
                             return isMac ? "Mac" : "Linux";
                         });

TEST(ApplicationModule, IsLookedForAsThisSystemHasIt) {
#ifdef __APPLE__
    const ApplicationModule::Layout& ours = ApplicationModule::macLayout;
#else
    const ApplicationModule::Layout& ours = ApplicationModule::linuxLayout;
#endif
    EXPECT_STREQ(ApplicationModule::layout.fileName, ours.fileName);
    EXPECT_STREQ(ApplicationModule::layout.installedFolder, ours.installedFolder);
}

}  // namespace
}  // namespace corvane
