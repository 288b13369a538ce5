#include "tests/app/menu/MenuMachine.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const DriveItem backup{.path = "/Volumes/Backup", .name = "Backup"};
const DriveItem films{.path = "/Volumes/Films", .name = "Films"};

Volume volumeOf(const DriveItem& drive) {
    return {drive.path.toStdString(), drive.name.toStdString(), false, true};
}

using MenuDrives = MenuTest;

TEST_F(MenuDrives, ListsTheChosenDrivesAndWhetherTheyAreThere) {
    machine.volumes.setMounted({volumeOf(backup)});
    manager().drives().add(films);
    manager().drives().add(backup);
    EXPECT_THAT(menu().driveRows(), ElementsAre(DriveRow{films, false}, DriveRow{backup, true}));
    manager().drives().remove(films);
    EXPECT_THAT(menu().driveRows(), ElementsAre(DriveRow{backup, true}));
}

TEST_F(MenuDrives, ListsTheDrivesOfAnEarlierRun) {
    manager().drives().add(backup);
    machine.openMenu();
    EXPECT_THAT(menu().driveRows(), ElementsAre(DriveRow{backup, false}));
}

TEST_F(MenuDrives, SeesADriveComeAndGoWhileThePanelIsShown) {
    manager().drives().add(backup);
    menu().panelAppeared();
    machine.volumes.setMounted({volumeOf(backup)});
    machine.advance(5s);
    EXPECT_THAT(menu().driveRows(), ElementsAre(DriveRow{backup, true}));
    machine.volumes.setMounted({});
    machine.advance(5s);
    EXPECT_THAT(menu().driveRows(), ElementsAre(DriveRow{backup, false}));
    menu().panelDisappeared();
    machine.volumes.setMounted({volumeOf(backup)});
    machine.advance(1min);
    EXPECT_THAT(menu().driveRows(), ElementsAre(DriveRow{backup, false}));
    menu().panelAppeared();
    EXPECT_THAT(menu().driveRows(), ElementsAre(DriveRow{backup, true}));
}

TEST_F(MenuDrives, NeverReadsADriveToFindOut) {
    machine.volumes.setMounted({volumeOf(backup)});
    manager().drives().add(backup);
    menu().panelAppeared();
    machine.advance(1min);
    EXPECT_THAT(machine.volumes.touched(), IsEmpty());
}

TEST_F(MenuDrives, OffersTheDrivesThatAreThereWhenThePanelOrTheMenuIsOpened) {
    EXPECT_THAT(menu().availableDrives(), IsEmpty());
    machine.volumes.setMounted({volumeOf(films), volumeOf(backup)});
    menu().panelAppeared();
    menu().panelDisappeared();
    EXPECT_THAT(menu().availableDrives(), ElementsAre(backup, films));
    machine.volumes.setMounted({volumeOf(films)});
    machine.advance(1min);
    EXPECT_THAT(menu().availableDrives(), ElementsAre(backup, films));
    menu().refreshDrives();
    EXPECT_THAT(menu().availableDrives(), ElementsAre(films));
}

TEST_F(MenuDrives, NoticesWhileThePanelIsShownWhatThereIsToOffer) {
    menu().panelAppeared();
    machine.volumes.setMounted({volumeOf(films)});
    machine.advance(5s);
    EXPECT_THAT(menu().availableDrives(), ElementsAre(films));
}

TEST_F(MenuDrives, OffersToAddWhatIsNotChosen) {
    machine.volumes.setMounted({volumeOf(films), volumeOf(backup)});
    menu().refreshDrives();
    EXPECT_THAT(menu().addableDrives(), ElementsAre(backup, films));
    SignalCount changes(menu(), &MenuState::addableDrivesChanged);
    manager().drives().add({.path = backup.path, .name = "Its name of another day"});
    EXPECT_GE(changes.take(), 1);
    EXPECT_THAT(menu().addableDrives(), ElementsAre(films));
    EXPECT_THAT(menu().availableDrives(), ElementsAre(backup, films));
    machine.volumes.setMounted({volumeOf(backup)});
    menu().refreshDrives();
    EXPECT_GE(changes.take(), 1);
    EXPECT_THAT(menu().addableDrives(), IsEmpty());
    manager().drives().remove(backup);
    EXPECT_GE(changes.take(), 1);
    EXPECT_THAT(menu().addableDrives(), ElementsAre(backup));
}

TEST_F(MenuDrives, AnnouncesJustChanges) {
    manager().drives().add(backup);
    menu().panelAppeared();
    SignalCount rows(menu(), &MenuState::driveRowsChanged);
    SignalCount available(menu(), &MenuState::availableDrivesChanged);
    machine.advance(1min);
    menu().refreshDrives();
    EXPECT_EQ(rows.take(), 0);
    EXPECT_EQ(available.take(), 0);
    machine.volumes.setMounted({volumeOf(backup)});
    machine.advance(5s);
    menu().refreshDrives();
    EXPECT_EQ(rows.take(), 1);
    EXPECT_EQ(available.take(), 1);
}

}  // namespace
}  // namespace corvane
