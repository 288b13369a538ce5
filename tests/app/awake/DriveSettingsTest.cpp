#include <limits>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "tests/app/awake/DriveMachine.h"

namespace corvane {
namespace {

class DriveSettings : public testing::Test {
protected:
    DriveManager& manager() { return *machine.manager; }
    int intervalFrom(DefaultsValue stored) {
        machine.defaults.set("drivealive.interval", std::move(stored));
        machine.open();
        return manager().intervalSeconds();
    }
    QList<DriveItem> drivesFrom(std::string_view json) {
        machine.defaults.set("drivealive.drives", bytesOf(json));
        machine.open();
        return manager().drives();
    }

    DriveMachine machine;
};

TEST_F(DriveSettings, ResumeASwitchThatWasLeftOn) {
    machine.mount({backup.path.toStdString()});
    machine.open();
    manager().setIntervalSeconds(30);
    manager().add(backup);
    manager().setEnabled(true);
    machine.manager.reset();
    static_cast<void>(machine.takeTouched());

    machine.open();
    EXPECT_TRUE(manager().enabled());
    EXPECT_EQ(manager().drives(), QList<DriveItem>{backup});
    EXPECT_EQ(manager().intervalSeconds(), 30);
    EXPECT_EQ(machine.takeTouched().size(), 1U) << "at start-up";
    EXPECT_EQ(machine.touchesIn(30s), 1U);
}

TEST_F(DriveSettings, RaiseAStoredIntervalToFifteenSeconds) {
    EXPECT_EQ(intervalFrom(std::int64_t{5}), 15);
    EXPECT_EQ(intervalFrom(std::int64_t{14}), 15);
    EXPECT_EQ(intervalFrom(std::int64_t{15}), 15);
    EXPECT_EQ(intervalFrom(std::int64_t{16}), 16);
    EXPECT_EQ(intervalFrom(std::int64_t{0}), 15);
    EXPECT_EQ(intervalFrom(std::numeric_limits<std::int64_t>::min()), 15);
    EXPECT_EQ(machine.defaults.get<std::int64_t>("drivealive.interval"),
              std::numeric_limits<std::int64_t>::min())
        << "what is stored stays";
}

TEST_F(DriveSettings, KeepALongStoredIntervalWithinWhatFits) {
    EXPECT_EQ(intervalFrom(std::int64_t{300}), 300);
    EXPECT_EQ(intervalFrom(std::numeric_limits<std::int64_t>::max()), std::numeric_limits<int>::max());
}

TEST_F(DriveSettings, TakeAMinuteForAnIntervalThatIsNoInteger) {
    EXPECT_EQ(intervalFrom(std::string("30")), 60);
    EXPECT_EQ(intervalFrom(30.0), 60);
    EXPECT_EQ(intervalFrom(true), 60);
    EXPECT_EQ(intervalFrom(bytesOf("30")), 60);
}

TEST_F(DriveSettings, CountAWronglyTypedSwitchAsAbsent) {
    for (const DefaultsValue& value : {DefaultsValue(std::int64_t{1}), DefaultsValue(std::string("true")),
                                       DefaultsValue(1.0), DefaultsValue(bytesOf("true"))}) {
        machine.defaults.set("drivealive.enabled", value);
        machine.open();
        EXPECT_FALSE(manager().enabled());
    }
}

TEST_F(DriveSettings, HoldTheDrivesAsJson) {
    machine.open();
    manager().add(films);
    manager().add(backup);
    EXPECT_EQ(machine.storedDrives(), R"([{"name":"Films","path":"/media/me/Films"},)"
                                      R"({"name":"Backup","path":"/media/me/Backup"}])");
    machine.open();
    EXPECT_EQ(manager().drives(), (QList<DriveItem>{films, backup})) << "in their order";
}

TEST_F(DriveSettings, HoldAnyText) {
    const DriveItem odd{.path = QString::fromUtf8("/media/\"ä\\\n\t\x01 💾/ß"), .name = QString()};
    machine.open();
    manager().add(odd);
    machine.open();
    EXPECT_EQ(manager().drives(), QList<DriveItem>{odd});
}

TEST_F(DriveSettings, ReadDrivesOfAnyLayoutAndIgnoreOtherKeys) {
    EXPECT_EQ(drivesFrom(R"( [ { "size": 7, "path": "/media/me/Backup", "name": "Backup" } ] )"),
              QList<DriveItem>{backup});
}

TEST_F(DriveSettings, StartEmptyWhenTheListIsDamagedAndLeaveItAsItIs) {
    const std::string whole = R"({"name":"Backup","path":"/media/me/Backup"})";
    const std::vector<std::string> damaged{
        "",
        " ",
        "null",
        "7",
        "\"text\"",
        "{}",
        whole,
        "[",
        "[]]",
        "[1]",
        "[null]",
        "[[]]",
        "[{}]",
        R"([{"path":"/media/me/Backup"}])",
        R"([{"name":"Backup"}])",
        R"([{"name":null,"path":"/media/me/Backup"}])",
        R"([{"name":"Backup","path":7}])",
        R"([{"Name":"Backup","Path":"/media/me/Backup"}])",
        R"([{"name":"Backup","path":"/media/\ud800"}])",
        fmt::format("[{},{{}}]", whole),
        fmt::format("[{},null]", whole),
        fmt::format("[{}", whole),
        fmt::format("[{},]", whole),
        std::string("\0\xff\xfe\x80", 4),
        std::string(5000, '['),
    };
    for (const std::string& json : damaged) {
        EXPECT_EQ(drivesFrom(json), QList<DriveItem>()) << json;
        manager().setEnabled(true);
        EXPECT_FALSE(manager().active());
        EXPECT_EQ(machine.storedDrives(), json);
    }
}

TEST_F(DriveSettings, StartEmptyWhenTheListIsNoBinaryData) {
    machine.defaults.set("drivealive.drives", std::string(R"([{"name":"a","path":"/a"}])"));
    machine.open();
    EXPECT_EQ(manager().drives(), QList<DriveItem>());
    EXPECT_EQ(machine.defaults.get<std::string>("drivealive.drives"), R"([{"name":"a","path":"/a"}])");
}

TEST_F(DriveSettings, ReplaceADamagedListWithTheNextSave) {
    EXPECT_EQ(drivesFrom("[1]"), QList<DriveItem>());
    manager().add(backup);
    EXPECT_EQ(machine.storedDrives(), R"([{"name":"Backup","path":"/media/me/Backup"}])");
}

TEST_F(DriveSettings, ReadNoMoreEntriesThanAnybodyChooses) {
    std::string json = R"([{"name":"","path":""})";
    for (int entry = 1; entry < 10'000; ++entry) {
        json += R"(,{"name":"","path":""})";
    }
    EXPECT_EQ(drivesFrom(json + "]").size(), 10'000);
    EXPECT_EQ(drivesFrom(json + R"(,{"name":"","path":""}])"), QList<DriveItem>());
}

TEST_F(DriveSettings, ReadNoMoreDataThanAnybodyChooses) {
    const std::string json = R"([{"name":"Backup","path":"/media/me/Backup"}])";
    const std::size_t limit = 1024UL * 1024;
    EXPECT_EQ(drivesFrom(json + std::string(limit - json.size(), ' ')), QList<DriveItem>{backup});
    EXPECT_EQ(drivesFrom(json + std::string(limit - json.size() + 1, ' ')), QList<DriveItem>());
}

TEST_F(DriveSettings, AreNotReplacedByAListThatWouldNotBeReadAgain) {
    machine.open();
    manager().add(backup);
    const auto stored = machine.storedDrives();
    manager().add({.path = QString(1024 * 1024, 'x'), .name = "Huge"});
    EXPECT_EQ(manager().drives().size(), 2);
    EXPECT_EQ(machine.storedDrives(), stored);
}

}  // namespace
}  // namespace corvane
