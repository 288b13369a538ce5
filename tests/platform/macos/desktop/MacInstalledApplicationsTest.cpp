#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/desktop/MacInstalledApplications.h"
#include "platform/simulated/VirtualTime.h"
#include "tests/platform/macos/fakes/Foundation/FakeBundles.h"
#include "tests/platform/macos/fakes/dispatch/FakeDispatch.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

class MacInstalledApplicationsTest : public testing::Test {
protected:
    /// A bundle in the first of the two folders for applications.
    void install(const std::string& name, const FakeBundles::Info& info) {
        std::filesystem::create_directories(folder / name);
        bundles.add((folder / name).string(), info);
    }

    void ask() {
        applications->list([this](InstalledApplications::List list) {
            EXPECT_TRUE(dispatch.isOnMainThread());
            ++replies;
            found = std::move(list);
        });
    }
    InstalledApplications::List list() {
        ask();
        time.settle();
        return found;
    }

    const TemporaryFolder folder;
    FakeBundles bundles;
    VirtualTime time;
    FakeDispatch dispatch{time};
    std::unique_ptr<MacInstalledApplications> applications = std::make_unique<MacInstalledApplications>(
        dispatch.mainQueue(),
        std::vector<std::string>{(folder / "first").string(), (folder / "second").string()});
    int replies = 0;
    InstalledApplications::List found;
};

TEST_F(MacInstalledApplicationsTest, AreTheBundlesOfAllFolders) {
    install("first/Render.app", {.identifier = "org.example.render"});
    install("second/Überweisung.app", {.identifier = "org.example.transfer"});
    EXPECT_THAT(list(),
                UnorderedElementsAre(InstalledApplication{"org.example.render", "Render", ""},
                                     InstalledApplication{"org.example.transfer", "Überweisung", ""}));
}

TEST_F(MacInstalledApplicationsTest, AreNamedAsTheyNameThemselvesOrElseAsTheirFile) {
    install("first/Studio Draw 2026.app", {.identifier = "a", .displayName = "Draw\n2026", .name = "Draw"});
    install("first/Studio Code.app", {.identifier = "b", .name = "Code"});
    install("first/Blank.app", {.identifier = "c", .displayName = "", .name = ""});
    install("first/Number.app",
            {.identifier = "d", .displayName = "1", .name = "Numbered", .isDisplayNameText = false});
    EXPECT_THAT(list(), UnorderedElementsAre(InstalledApplication{"a", "Draw 2026", ""},
                                             InstalledApplication{"b", "Code", ""},
                                             InstalledApplication{"c", "Blank", ""},
                                             InstalledApplication{"d", "Numbered", ""}));
}

TEST_F(MacInstalledApplicationsTest, AreFoundAsFarDownAsMakersPutThem) {
    install("first/Utilities/Console.app", {.identifier = "org.example.console"});
    install("first/Maker/Suite/Draw.app", {.identifier = "org.example.draw"});
    install("first/Maker/Suite/Parts/Internal.app", {.identifier = "org.example.internal"});
    install("first/.hidden/Secret.app", {.identifier = "org.example.secret"});
    install("first/Render.app/Contents/Helper.app", {.identifier = "org.example.helper"});
    EXPECT_THAT(list(), UnorderedElementsAre(InstalledApplication{"org.example.console", "Console", ""},
                                             InstalledApplication{"org.example.draw", "Draw", ""}));
}

TEST_F(MacInstalledApplicationsTest, AreEachThereOnce) {
    install("first/Render.app", {.identifier = "org.example.render"});
    install("second/Render 2.app", {.identifier = "org.example.render"});
    EXPECT_THAT(list(), ElementsAre(InstalledApplication{"org.example.render", "Render", ""}));
}

TEST_F(MacInstalledApplicationsTest, LeaveOutThisOneAndWhatIsNone) {
    install("first/Corvane.app", {.identifier = "de.tavrin.corvane"});
    install("first/Nameless.app", {.identifier = std::nullopt});
    install("first/Empty.app", {.identifier = ""});
    install("first/Endless.app", {.identifier = std::string(1025, 'a')});
    install("first/.app", {.identifier = "org.example.no-name"});
    std::filesystem::create_directories(folder / "first/NoBundle.app");
    static_cast<void>(folder.write("first/file.app", "text"));
    static_cast<void>(folder.write("first/file", "text"));
    EXPECT_THAT(list(), IsEmpty());
}

TEST_F(MacInstalledApplicationsTest, HaveAnImageWhenTheirBundleBringsIt) {
    static_cast<void>(folder.write("first/With.app/Contents/Resources/AppIcon.icns", ""));
    static_cast<void>(folder.write("first/Short.app/Contents/Resources/AppIcon.icns", ""));
    install("first/With.app", {.identifier = "1", .iconFile = "AppIcon.icns"});
    install("first/Short.app", {.identifier = "2", .iconFile = "AppIcon"});
    install("first/Without.app", {.identifier = "3", .iconFile = "AppIcon"});
    install("first/Nonsense.app", {.identifier = "4", .iconFile = "AppIcon", .isIconFileText = false});
    EXPECT_THAT(list(),
                UnorderedElementsAre(
                    InstalledApplication{
                        "1", "With", (folder / "first/With.app/Contents/Resources/AppIcon.icns").string()},
                    InstalledApplication{
                        "2", "Short", (folder / "first/Short.app/Contents/Resources/AppIcon.icns").string()},
                    InstalledApplication{"3", "Without", ""}, InstalledApplication{"4", "Nonsense", ""}));
}

TEST_F(MacInstalledApplicationsTest, HaveNamesOfOneLine) {
    install("first/Two\nlines.app", {.identifier = "org.example.lines"});
    EXPECT_THAT(list(), ElementsAre(InstalledApplication{"org.example.lines", "Two lines", ""}));
}

TEST_F(MacInstalledApplicationsTest, AreReadAfreshEachTimeAndLater) {
    ask();
    EXPECT_EQ(replies, 0);
    time.settle();
    EXPECT_EQ(replies, 1);
    install("first/Render.app", {.identifier = "org.example.render"});
    EXPECT_THAT(list(), SizeIs(1));
    EXPECT_EQ(replies, 2);
}

TEST_F(MacInstalledApplicationsTest, AnswerNobodyOnceTheyAreGone) {
    ask();
    applications.reset();
    time.settle();
    EXPECT_EQ(replies, 0);
}

}  // namespace
}  // namespace corvane
