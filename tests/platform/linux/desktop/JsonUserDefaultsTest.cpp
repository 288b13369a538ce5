#include <csignal>
#include <memory>

#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/desktop/JsonUserDefaults.h"
#include "platform/simulated/RecordingLog.h"
#include "tests/platform/UserDefaultsContract.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Each look at the defaults is that of a process that has just started.
class JsonRig {
public:
    UserDefaults& defaults() {
        defaults_ = std::make_unique<JsonUserDefaults>(folder_ / "settings.json", log_);
        return *defaults_;
    }

private:
    TemporaryFolder folder_;
    RecordingLog log_;
    std::unique_ptr<JsonUserDefaults> defaults_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Json, UserDefaultsContract, JsonRig);

/// This process without root's right to open everything, while it lives.
class OrdinaryUser {
public:
    OrdinaryUser() { EXPECT_EQ(seteuid(geteuid() == 0 ? nobody : geteuid()), 0); }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser() { EXPECT_EQ(seteuid(getuid()), 0); }

private:
    static constexpr uid_t nobody = 65534;
};

/// Lets this process write no byte to any file while it lives.
class FullDisk {
public:
    FullDisk() {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &former_);
        rlimit none = former_;
        none.rlim_cur = 0;
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &none), 0);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &former_);
        std::signal(SIGXFSZ, SIG_DFL);
    }

private:
    rlimit former_{};
};

mode_t permissionsOf(const fs::path& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777U;
}

class JsonUserDefaultsTest : public testing::Test {
protected:
    JsonUserDefaults open() { return {path, log}; }

    void write(std::string_view content) { folder.write("settings.json", content); }
    std::string content() { return folder.read("settings.json"); }

    TemporaryFolder folder;
    const fs::path path = folder / "settings.json";
    RecordingLog log;
};

TEST_F(JsonUserDefaultsTest, WritesNothingBeforeSomethingIsSet) {
    open().remove("unknown");
    EXPECT_THAT(folder.names(), IsEmpty());
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(JsonUserDefaultsTest, HasADocumentedForm) {
    auto defaults = open();
    defaults.set("bool", true);
    defaults.set("data", std::vector<std::byte>{std::byte{'H'}, std::byte{'i'}});
    defaults.set("integer", std::int64_t{-5});
    defaults.set("real", 1.5);
    defaults.set("text", std::string("Lüfter"));
    EXPECT_EQ(content(), R"({
    "bool": true,
    "data": {
        "data": "SGk="
    },
    "integer": -5,
    "real": {
        "real": 1.5
    },
    "text": "Lüfter"
}
)");
    EXPECT_THAT(folder.names(), ElementsAre("settings.json")) << "nothing is left of writing";
}

TEST_F(JsonUserDefaultsTest, IsForTheUsersEyesOnly) {
    const fs::path deep = folder / "config/de.tavrin.corvane/settings.json";
    JsonUserDefaults(deep, log).set("key", true);
    EXPECT_EQ(permissionsOf(folder / "config"), 0700U);
    EXPECT_EQ(permissionsOf(deep.parent_path()), 0700U);
    EXPECT_EQ(permissionsOf(deep), 0600U);
    fs::permissions(deep, fs::perms(0644));
    JsonUserDefaults(deep, log).set("key", false);
    EXPECT_EQ(permissionsOf(deep), 0600U);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(JsonUserDefaultsTest, KeepsWhatItDoesNotUnderstand) {
    const std::string unknown = R"({"half":1.5,"list":[1,null],"nothing":null,"odd":{"data":"%"},)"
                                R"("odder":{"real":"x"},"two":{"data":"","real":1}})";
    write(unknown);
    auto defaults = open();
    for (const char* key : {"half", "list", "nothing", "odd", "odder", "two"}) {
        EXPECT_EQ(defaults.value(key), std::nullopt) << key;
    }
    defaults.set("key", true);
    defaults.remove("key");
    std::string compact = content();
    std::erase_if(compact, [](char letter) { return letter == ' ' || letter == '\n'; });
    EXPECT_EQ(compact, unknown);
}

TEST_F(JsonUserDefaultsTest, LeavesTheFileAloneWhenNothingChanges) {
    write(R"({"key":true})");
    auto defaults = open();
    defaults.set("key", true);
    defaults.remove("other");
    EXPECT_EQ(content(), R"({"key":true})");
}

TEST_F(JsonUserDefaultsTest, SetsADamagedFileAside) {
    const std::string tooLarge = R"({"key":")" + std::string(JsonSettingsFile::maxSize, 'x') + R"("})";
    for (const std::string& damaged : {std::string(), std::string("nonsense"), std::string(R"({"key":tr)"),
                                       std::string("[1]"), std::string("\0\xff", 2), tooLarge}) {
        const TemporaryFolder ownFolder;
        RecordingLog ownLog;
        const fs::path own = ownFolder.write("settings.json", damaged);
        JsonUserDefaults defaults(own, ownLog);
        EXPECT_EQ(defaults.value("key"), std::nullopt);
        defaults.set("key", true);
        EXPECT_EQ(ownFolder.read("settings.json.damaged"), damaged);
        EXPECT_EQ(JsonUserDefaults(own, ownLog).value("key"), DefaultsValue(true));
        EXPECT_THAT(
            ownLog.lines(),
            ElementsAre(AllOf(testing::StartsWith("Corvane: the settings in " + own.string() + " are"),
                              testing::EndsWith(own.string() + ".damaged"))));
    }
}

TEST_F(JsonUserDefaultsTest, KeepsEveryDamagedFile) {
    for (const char* damaged : {"first", "second", "third"}) {
        write(damaged);
        open();
    }
    EXPECT_THAT(folder.names(),
                ElementsAre("settings.json.damaged", "settings.json.damaged-2", "settings.json.damaged-3"));
    EXPECT_EQ(folder.read("settings.json.damaged"), "first");
    EXPECT_EQ(folder.read("settings.json.damaged-3"), "third");
}

TEST_F(JsonUserDefaultsTest, TouchesNoFileThatItCannotRead) {
    write(R"({"key":true})");
    fs::permissions(folder.path(), fs::perms::all);
    fs::permissions(path, fs::perms::none);
    {
        const OrdinaryUser user;
        auto defaults = open();
        EXPECT_EQ(defaults.value("key"), std::nullopt);
        defaults.set("key", false);
        EXPECT_EQ(defaults.value("key"), DefaultsValue(false));
    }
    fs::permissions(path, fs::perms::owner_read);
    EXPECT_EQ(content(), R"({"key":true})");
    EXPECT_THAT(folder.names(), ElementsAre("settings.json"));
    EXPECT_THAT(log.lines(), ElementsAre(HasSubstr("cannot be read (Permission denied)")));
}

TEST_F(JsonUserDefaultsTest, TouchesNoDamagedFileThatItCannotRename) {
    write("nonsense");
    fs::permissions(folder.path(), fs::perms(0555));
    fs::permissions(path, fs::perms(0666));
    {
        const OrdinaryUser user;
        auto defaults = open();
        defaults.set("key", false);
        EXPECT_EQ(defaults.value("key"), DefaultsValue(false));
    }
    EXPECT_EQ(content(), "nonsense");
    EXPECT_THAT(log.lines(), ElementsAre(HasSubstr("cannot be renamed (Permission denied)")));
    fs::permissions(folder.path(), fs::perms::owner_all);
}

TEST_F(JsonUserDefaultsTest, TouchesNothingThatIsNoFile) {
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    open().set("key", true);
    EXPECT_TRUE(fs::is_fifo(path));
    EXPECT_THAT(log.lines(), ElementsAre(HasSubstr("cannot be read (not a file)")));
}

TEST_F(JsonUserDefaultsTest, HoldsWhatItCannotWriteAndSaysSoOnceUntilItCan) {
    write(R"({"old":1})");
    auto defaults = open();
    {
        const FullDisk disk;
        defaults.set("one", true);
        defaults.set("two", true);
        defaults.remove("old");
        EXPECT_EQ(content(), R"({"old":1})");
        EXPECT_EQ(defaults.value("one"), DefaultsValue(true));
        EXPECT_EQ(defaults.value("old"), std::nullopt);
    }
    EXPECT_THAT(log.lines(), ElementsAre(HasSubstr("cannot be written to " + path.string())));
    EXPECT_THAT(folder.names(), ElementsAre("settings.json"));

    defaults.set("one", true);
    const auto later = open();
    EXPECT_EQ(later.value("one"), DefaultsValue(true));
    EXPECT_EQ(later.value("two"), DefaultsValue(true));
    EXPECT_EQ(later.value("old"), std::nullopt);
    {
        const FullDisk disk;
        defaults.set("one", false);
    }
    EXPECT_EQ(log.lines().size(), 2U);
}

TEST_F(JsonUserDefaultsTest, TouchesNoFileInThePlaceOfItsFolder) {
    folder.write("blocked", "a file where the folder should be");
    JsonUserDefaults defaults(folder / "blocked/settings.json", log);
    defaults.set("key", true);
    EXPECT_EQ(defaults.value("key"), DefaultsValue(true));
    EXPECT_EQ(folder.read("blocked"), "a file where the folder should be");
    EXPECT_EQ(log.lines().size(), 1U);
}

TEST_F(JsonUserDefaultsTest, GoesOnTopOfWhatOthersHaveWrittenMeanwhile) {
    auto defaults = open();
    defaults.set("mine", true);
    defaults.set("both", std::int64_t{1});
    write(R"({"both":2,"theirs":true})");
    EXPECT_EQ(defaults.value("theirs"), std::nullopt) << "not before a change";
    defaults.set("new", true);
    EXPECT_EQ(defaults.value("theirs"), DefaultsValue(true));
    EXPECT_EQ(defaults.value("both"), DefaultsValue(std::int64_t{2}));
    EXPECT_EQ(defaults.value("mine"), std::nullopt);
    EXPECT_EQ(open().value("new"), DefaultsValue(true));
    EXPECT_EQ(open().value("theirs"), DefaultsValue(true));
}

TEST_F(JsonUserDefaultsTest, WritesWhatItHoldsAlreadyWhenOthersHaveChangedTheFile) {
    auto defaults = open();
    defaults.set("key", true);
    write(R"({"key":false,"gone":1,"theirs":true})");
    defaults.set("key", true);
    EXPECT_EQ(open().value("key"), DefaultsValue(true));
    EXPECT_EQ(open().value("theirs"), DefaultsValue(true));

    write(R"({"key":true,"gone":12,"theirs":true})");
    defaults.remove("gone");
    EXPECT_EQ(open().value("gone"), std::nullopt);
    EXPECT_EQ(open().value("theirs"), DefaultsValue(true));

    fs::remove(path);
    defaults.set("key", true);
    EXPECT_EQ(open().value("key"), DefaultsValue(true));
}

TEST_F(JsonUserDefaultsTest, SetsAsideWhatOthersHaveDamagedMeanwhileAndGoesOn) {
    auto defaults = open();
    defaults.set("one", true);
    write("nonsense");
    defaults.set("two", true);
    EXPECT_EQ(folder.read("settings.json.damaged"), "nonsense");
    EXPECT_EQ(open().value("one"), DefaultsValue(true));
    EXPECT_EQ(open().value("two"), DefaultsValue(true));
}

TEST_F(JsonUserDefaultsTest, WritesAFileAnewThatOthersHaveRemoved) {
    auto defaults = open();
    defaults.set("one", true);
    fs::remove(path);
    defaults.set("two", true);
    EXPECT_EQ(open().value("one"), DefaultsValue(true));
    EXPECT_EQ(open().value("two"), DefaultsValue(true));
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(JsonUserDefaultsTest, KeepsASymbolicLinkAndWritesWhereItLeads) {
    fs::create_directory(folder / "dotfiles");
    fs::create_symlink("dotfiles/link", path);
    fs::create_symlink("settings.json", folder / "dotfiles/link");
    open().set("one", true);
    open().set("two", true);
    EXPECT_EQ(fs::read_symlink(path), "dotfiles/link");
    EXPECT_EQ(fs::read_symlink(folder / "dotfiles/link"), "settings.json");
    EXPECT_THAT(folder.read("dotfiles/settings.json"), AllOf(HasSubstr("one"), HasSubstr("two")));

    folder.write("dotfiles/settings.json", "nonsense");
    open().set("three", true);
    EXPECT_EQ(fs::read_symlink(path), "dotfiles/link");
    EXPECT_EQ(folder.read("dotfiles/settings.json.damaged"), "nonsense");
    EXPECT_EQ(open().value("three"), DefaultsValue(true));
}

TEST_F(JsonUserDefaultsTest, RefusesWhatItCouldNotReadBack) {
    auto defaults = open();
    defaults.set("key", true);
    defaults.set("key", std::string("\xff"));
    defaults.set("key", std::string(JsonSettingsFile::maxSize, 'x'));
    defaults.set("key\xff", false);
    EXPECT_EQ(defaults.value("key"), DefaultsValue(true));
    EXPECT_EQ(open().value("key"), DefaultsValue(true));
    EXPECT_EQ(log.count("stays as it was"), 3U);
}

TEST(SettingsPath, IsInTheUsersConfigurationFolder) {
    const auto folder = [](const char* name) {
        return std::string_view(name) == "XDG_CONFIG_HOME" ? "/config" : nullptr;
    };
    EXPECT_EQ(settingsPath(folder), "/config/de.tavrin.corvane/settings.json");
}

}  // namespace
}  // namespace corvane
