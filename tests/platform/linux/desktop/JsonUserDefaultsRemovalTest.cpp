#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/desktop/JsonUserDefaults.h"
#include "platform/simulated/RecordingLog.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

class JsonUserDefaultsRemoval : public testing::Test {
protected:
    JsonUserDefaults open() { return {path, log}; }

    TemporaryFolder folder;
    const fs::path path = folder / "settings.json";
    RecordingLog log;
};

TEST_F(JsonUserDefaultsRemoval, TakesItsFolderAwayWithEverythingInIt) {
    const fs::path deep = folder / "config/de.tavrin.corvane/settings.json";
    folder.write("config/de.tavrin.corvane/settings.json", "nonsense");
    folder.write("config/de.tavrin.corvane/settings.json.damaged-2", "");
    JsonUserDefaults defaults(deep, log);
    defaults.set("key", true);
    ASSERT_TRUE(fs::exists(deep.string() + ".damaged"));
    defaults.removeAll();
    EXPECT_TRUE(fs::is_empty(folder / "config"));
}

TEST_F(JsonUserDefaultsRemoval, BringsNoFileBackOnceAllIsRemoved) {
    const fs::path deep = folder / "config/de.tavrin.corvane/settings.json";
    JsonUserDefaults defaults(deep, log);
    defaults.set("key", true);
    defaults.removeAll();
    defaults.set("key", true);
    defaults.set("other", std::int64_t{1});
    defaults.remove("other");
    defaults.remove("never set");
    EXPECT_TRUE(fs::is_empty(folder / "config"));
    EXPECT_EQ(defaults.value("key"), DefaultsValue(true));

    folder.write("config/de.tavrin.corvane/settings.json", "of the next installation");
    defaults.set("key", false);
    EXPECT_EQ(folder.read("config/de.tavrin.corvane/settings.json"), "of the next installation");
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(JsonUserDefaultsRemoval, LeavesWhatOthersHavePutIntoItsFolder) {
    folder.write("settings.json", "{}");
    folder.write("settings.json.backup", "a copy");
    folder.write("settings.json.BackUp", "an older one");
    folder.write("settings.json.bak", "another");
    folder.write("settings.json.damaged by me", "a note");
    folder.write("settings.json.damaged-", "another");
    folder.write("settings.json.damaged/file", "in a folder");
    folder.write("theirs", "");
    open().removeAll();
    EXPECT_THAT(folder.names(),
                ElementsAre("settings.json.BackUp", "settings.json.backup", "settings.json.bak",
                            "settings.json.damaged", "settings.json.damaged by me", "settings.json.damaged-",
                            "theirs"));
    open().removeAll();
    EXPECT_THAT(log.lines(), IsEmpty()) << "there was nothing left to remove";
}

TEST_F(JsonUserDefaultsRemoval, RemovesALinkAndWhatItLeadsTo) {
    folder.write("dotfiles/corvane.json", "{}");
    folder.write("dotfiles/corvane.json.damaged", "");
    folder.write("dotfiles/corvane.json.backup", "the user's own");
    fs::create_directory(folder / "settings");
    fs::create_symlink("../dotfiles/corvane.json", folder / "settings/settings.json");
    JsonUserDefaults(folder / "settings/settings.json", log).removeAll();
    EXPECT_THAT(folder.names(), ElementsAre("dotfiles"));
    EXPECT_EQ(folder.read("dotfiles/corvane.json.backup"), "the user's own");
    EXPECT_FALSE(fs::exists(folder / "dotfiles/corvane.json"));
    EXPECT_FALSE(fs::exists(folder / "dotfiles/corvane.json.damaged"));
}

TEST_F(JsonUserDefaultsRemoval, PassesOverWhatCannotBeRemoved) {
    fs::create_directory(path);
    auto defaults = open();
    defaults.set("key", true);
    defaults.removeAll();
    EXPECT_EQ(defaults.value("key"), std::nullopt);
    EXPECT_TRUE(fs::is_directory(path));
}

}  // namespace
}  // namespace corvane
