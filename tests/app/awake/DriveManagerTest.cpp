#include <QMetaProperty>
#include <limits>

#include <gtest/gtest.h>

#include "tests/app/awake/DriveMachine.h"
#include "tests/support/SignalCount.h"

namespace corvane {
namespace {

using Paths = std::vector<std::string>;

const std::string backupPath = backup.path.toStdString();
const std::string filmsPath = films.path.toStdString();

class DriveManagerTest : public testing::Test {
protected:
    DriveManager& manager() { return *machine.manager; }

    DriveMachine machine;
};

TEST_F(DriveManagerTest, IsOffWithoutDrivesAtOneMinuteAtFirst) {
    machine.open();
    EXPECT_FALSE(manager().enabled());
    EXPECT_FALSE(manager().active());
    EXPECT_EQ(manager().drives(), QList<DriveItem>());
    EXPECT_EQ(manager().intervalSeconds(), 60);
    EXPECT_TRUE(machine.defaults.writes().empty()) << "what is absent stays so";
}

TEST_F(DriveManagerTest, TouchesNothingSwitchedOnWithAnEmptyList) {
    machine.mount({backupPath});
    machine.open();
    manager().setEnabled(true);
    EXPECT_FALSE(manager().active());
    EXPECT_EQ(machine.touchesIn(1h), 0U);
}

TEST_F(DriveManagerTest, TouchesTheFirstDriveAtOnceAndThenAtTheInterval) {
    machine.mount({backupPath});
    machine.open();
    manager().setEnabled(true);
    manager().add(backup);
    EXPECT_TRUE(manager().active());
    EXPECT_EQ(machine.takeTouched(), Paths{backupPath});
    EXPECT_EQ(machine.touchesIn(59s), 0U);
    EXPECT_EQ(machine.touchesIn(1s), 1U);
    EXPECT_EQ(machine.touchesIn(10min), 10U);
}

TEST_F(DriveManagerTest, TouchesAllDrivesInTheirOrder) {
    machine.openWith({films, backup});
    EXPECT_EQ(machine.takeTouched(), (Paths{filmsPath, backupPath}));
    machine.time.advance(60s);
    EXPECT_EQ(machine.takeTouched(), (Paths{filmsPath, backupPath}));
}

TEST_F(DriveManagerTest, StopsWhenItIsSwitchedOff) {
    machine.openWith({backup});
    manager().setEnabled(false);
    EXPECT_FALSE(manager().active());
    EXPECT_EQ(machine.touchesIn(1h), 0U);
    EXPECT_EQ(machine.defaults.get<bool>("drivealive.enabled"), false);
    manager().setEnabled(true);
    EXPECT_EQ(machine.takeTouched(), Paths{backupPath});
    EXPECT_EQ(machine.defaults.get<bool>("drivealive.enabled"), true);
}

TEST_F(DriveManagerTest, StopsWithTheLastDriveRemoved) {
    machine.openWith({backup, films});
    manager().remove(backup);
    EXPECT_EQ(machine.touchesIn(60s), 1U);
    manager().remove(films);
    EXPECT_FALSE(manager().active());
    EXPECT_TRUE(manager().enabled());
    EXPECT_EQ(machine.touchesIn(1h), 0U);
    EXPECT_EQ(machine.storedDrives(), "[]");
}

TEST_F(DriveManagerTest, RemovesEveryDriveOfAPath) {
    machine.openWith({backup, DriveItem{.path = backup.path, .name = "Another name"}, films});
    ASSERT_EQ(manager().drives().size(), 3);
    manager().remove(backup);
    EXPECT_EQ(manager().drives(), QList<DriveItem>{films});
    EXPECT_EQ(machine.touchesIn(60s), 1U);
}

TEST_F(DriveManagerTest, EndsItsTouchesWithItself) {
    machine.openWith({backup});
    machine.manager.reset();
    EXPECT_EQ(machine.touchesIn(1h), 0U);
}

TEST_F(DriveManagerTest, BeginsTheIntervalAnewWithEveryChange) {
    machine.openWith({backup});
    machine.time.advance(50s);
    static_cast<void>(machine.takeTouched());
    manager().setIntervalSeconds(30);
    EXPECT_EQ(machine.takeTouched(), Paths{backupPath}) << "at once";
    EXPECT_EQ(machine.touchesIn(29s), 0U);
    EXPECT_EQ(machine.touchesIn(1s), 1U);
    manager().setIntervalSeconds(300);
    EXPECT_EQ(machine.touchesIn(299s), 0U);
    EXPECT_EQ(machine.touchesIn(1s), 1U);
}

TEST_F(DriveManagerTest, StoresAndActsOnAnEqualValueToo) {
    machine.openWith({backup});
    SignalCount enabledChanges(manager(), &DriveManager::enabledChanged);
    SignalCount intervalChanges(manager(), &DriveManager::intervalSecondsChanged);
    static_cast<void>(machine.takeTouched());
    manager().setEnabled(true);
    machine.time.settle();
    manager().setIntervalSeconds(60);
    machine.time.settle();
    EXPECT_EQ(machine.takeTouched(), (Paths{backupPath, backupPath}));
    EXPECT_EQ(machine.defaults.get<std::int64_t>("drivealive.interval"), 60);
    EXPECT_EQ(enabledChanges.take(), 0);
    EXPECT_EQ(intervalChanges.take(), 0);
}

TEST_F(DriveManagerTest, AnnouncesChanges) {
    machine.open();
    SignalCount enabledChanges(manager(), &DriveManager::enabledChanged);
    SignalCount drivesChanges(manager(), &DriveManager::drivesChanged);
    SignalCount intervalChanges(manager(), &DriveManager::intervalSecondsChanged);
    manager().setEnabled(true);
    EXPECT_EQ(enabledChanges.take(), 1);
    manager().setIntervalSeconds(30);
    EXPECT_EQ(intervalChanges.take(), 1);
    manager().add(backup);
    EXPECT_EQ(drivesChanges.take(), 1);
    manager().add(backup);
    EXPECT_EQ(drivesChanges.take(), 0);
    manager().remove(backup);
    EXPECT_EQ(drivesChanges.take(), 1);
    manager().remove(backup);
    EXPECT_EQ(drivesChanges.take(), 0);
}

TEST_F(DriveManagerTest, PublishesWhatAPageReads) {
    machine.openWith({backup});
    EXPECT_EQ(manager().property("enabled"), true);
    EXPECT_EQ(manager().property("intervalSeconds"), 60);
    EXPECT_EQ(manager().property("drives").value<QList<DriveItem>>(), QList<DriveItem>{backup});
    const QMetaObject& item = DriveItem::staticMetaObject;
    EXPECT_EQ(item.property(item.indexOfProperty("path")).readOnGadget(&backup), backup.path);
    EXPECT_EQ(item.property(item.indexOfProperty("name")).readOnGadget(&backup), backup.name);
    EXPECT_TRUE(manager().setProperty("enabled", false));
    EXPECT_TRUE(manager().setProperty("intervalSeconds", 300));
    EXPECT_FALSE(manager().enabled());
    EXPECT_EQ(manager().intervalSeconds(), 300);
}

TEST_F(DriveManagerTest, PassesOverADriveOfAPathItHas) {
    machine.openWith({backup});
    const std::size_t writes = machine.defaults.writes().size();
    static_cast<void>(machine.takeTouched());
    manager().add({.path = backup.path, .name = "Another name"});
    EXPECT_EQ(manager().drives(), QList<DriveItem>{backup});
    EXPECT_EQ(machine.defaults.writes().size(), writes) << "nothing is saved";
    EXPECT_EQ(machine.takeTouched(), Paths{}) << "nothing is scheduled anew";
}

TEST_F(DriveManagerTest, TellsDrivesApartByTheirPathsAlone) {
    machine.open();
    manager().add(backup);
    manager().add({.path = films.path, .name = backup.name});
    EXPECT_EQ(manager().drives().size(), 2);
    manager().remove({.path = backup.path, .name = "Another name"});
    EXPECT_EQ(manager().drives(), (QList<DriveItem>{{.path = films.path, .name = backup.name}}));
}

TEST_F(DriveManagerTest, KeepsDrivesThatAreNotMountedAndTouchesThemWhenTheyAre) {
    machine.openWith({backup, films});
    machine.mount({filmsPath});
    static_cast<void>(machine.takeTouched());
    machine.time.advance(60s);
    EXPECT_EQ(machine.takeTouched(), Paths{filmsPath});
    EXPECT_EQ(manager().drives(), (QList<DriveItem>{backup, films}));
    machine.mount({filmsPath, backupPath});
    machine.time.advance(60s);
    EXPECT_EQ(machine.takeTouched(), (Paths{backupPath, filmsPath}));
}

TEST_F(DriveManagerTest, StartsBeforeItsDriveIsMounted) {
    machine.openWith({backup});
    machine.manager.reset();
    machine.mount({});
    static_cast<void>(machine.takeTouched());
    machine.open();
    EXPECT_TRUE(manager().active());
    EXPECT_EQ(machine.touchesIn(10min), 0U);
    machine.mount({backupPath});
    EXPECT_EQ(machine.touchesIn(60s), 1U);
}

TEST_F(DriveManagerTest, AsksADriveThatHangsOnceHoweverLongItTakes) {
    machine.volumes.hang(backupPath);
    machine.openWith({backup, films});
    EXPECT_EQ(machine.takeTouched(), (Paths{backupPath, filmsPath}));
    machine.time.advance(5h);
    EXPECT_EQ(machine.takeTouched(), Paths(300, filmsPath));
    machine.volumes.letGo(backupPath);
    machine.time.settle();
    EXPECT_EQ(machine.takeTouched(), Paths{}) << "not before its turn";
    machine.time.advance(60s);
    EXPECT_EQ(machine.takeTouched(), (Paths{backupPath, filmsPath}));
}

TEST_F(DriveManagerTest, DoesNotPileUpTouchesOfAHangingDriveByChangesEither) {
    machine.volumes.hang(backupPath);
    machine.openWith({backup});
    for (int change = 0; change < 10; ++change) {
        manager().setEnabled(false);
        manager().setEnabled(true);
        manager().setIntervalSeconds(30 + change);
        manager().remove(backup);
        manager().add(backup);
    }
    EXPECT_EQ(machine.takeTouched(), Paths{backupPath});
}

TEST_F(DriveManagerTest, TouchesTheDriveThatTookThePlaceOfOneThatHung) {
    machine.volumes.hang(backupPath);
    machine.openWith({backup});
    EXPECT_EQ(machine.takeTouched(), Paths{backupPath});
    machine.mount({});
    machine.time.advance(60s);
    machine.mount({backupPath});
    machine.time.advance(60s);
    EXPECT_EQ(machine.takeTouched(), Paths{backupPath});
    machine.time.advance(5h);
    EXPECT_EQ(machine.takeTouched(), Paths{}) << "it hangs, too, and is asked once";
}

TEST_F(DriveManagerTest, TakesTheAnswerOfADriveThatIsGoneForNoAnswerOfTheNext) {
    machine.volumes.hang(backupPath);
    machine.openWith({backup});
    machine.mount({});
    machine.time.advance(60s);
    machine.volumes.letGo(backupPath);
    machine.volumes.hang(backupPath);
    machine.mount({backupPath});
    manager().setIntervalSeconds(30);
    machine.time.settle();
    static_cast<void>(machine.takeTouched());
    machine.time.advance(5h);
    EXPECT_EQ(machine.takeTouched(), Paths{});
}

TEST_F(DriveManagerTest, CopesWithAnAnswerThatComesAfterItsEnd) {
    machine.volumes.hang(backupPath);
    machine.openWith({backup});
    machine.manager.reset();
    machine.volumes.letGo(backupPath);
    machine.time.advance(1min);
    EXPECT_EQ(machine.takeTouched(), Paths{backupPath});
}

TEST_F(DriveManagerTest, MakesUpForASuspendWithOneTouch) {
    machine.openWith({backup});
    machine.time.suspend(8h);
    EXPECT_EQ(machine.touchesIn(0s), 1U);
}

TEST_F(DriveManagerTest, KeepsAnIntervalAsItIsSetButTouchesOnceASecondAtMost) {
    machine.openWith({backup});
    for (const int seconds : {5, 1, 0, -1, std::numeric_limits<int>::min()}) {
        manager().setIntervalSeconds(seconds);
        EXPECT_EQ(manager().intervalSeconds(), seconds);
        EXPECT_EQ(machine.defaults.get<std::int64_t>("drivealive.interval"), seconds);
        EXPECT_EQ(machine.touchesIn(10s), seconds == 5 ? 2U : 10U) << seconds;
    }
}

TEST_F(DriveManagerTest, CopesWithTheLongestInterval) {
    machine.openWith({backup});
    manager().setIntervalSeconds(std::numeric_limits<int>::max());
    machine.time.settle();
    EXPECT_EQ(machine.touchesIn(24h * 365), 0U);
}

}  // namespace
}  // namespace corvane
