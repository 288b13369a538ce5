#include "tests/app/ui/PanelTest.h"

namespace corvane {
namespace {

class PanelDrives : public PanelTest {
protected:
    void openSection() {
        open();
        click("drivesSection/header");
    }
    std::vector<std::string> chosen() {
        std::vector<std::string> paths;
        for (const DriveItem& drive : manager().drives().drives()) {
            paths.push_back(drive.path.toStdString());
        }
        return paths;
    }
};

TEST_F(PanelDrives, AreSwitched) {
    openSection();
    EXPECT_EQ(text("drivesSection/header"), "Keep drives awake");
    click("drivesSection/switch");
    EXPECT_TRUE(manager().drives().enabled());
    EXPECT_TRUE(isOn("drivesSection/switch"));
    click("drivesSection/switch");
    EXPECT_FALSE(manager().drives().enabled());
}

TEST_F(PanelDrives, SaysThatThereAreNone) {
    openSection();
    EXPECT_TRUE(isShown("noDrives"));
    EXPECT_EQ(text("noDrives"), "No external drives");
    machine.attach("Archive");
    advance(5s);
    EXPECT_FALSE(isShown("noDrives"));
}

TEST_F(PanelDrives, AddsADriveThatIsTouchedFromThenOn) {
    machine.attach("Archive");
    openSection();
    click("drivesSection/switch");
    click("addDrive");
    waitForPopups();
    press(Qt::Key_Return);
    EXPECT_THAT(chosen(), testing::ElementsAre("/Volumes/Archive"));
    EXPECT_EQ(text("driveName"), "Archive");
    EXPECT_THAT(machine.volumes.touched(), testing::ElementsAre("/Volumes/Archive"));
}

TEST_F(PanelDrives, OffersADriveThatWasAttachedThisVeryMoment) {
    machine.attach("Media");
    openSection();
    machine.attach("Archive");
    click("addDrive");
    waitForPopups();
    press(Qt::Key_Return);
    EXPECT_THAT(chosen(), testing::ElementsAre("/Volumes/Archive"));
}

TEST_F(PanelDrives, OffersNothingWhileThereIsNothingToAdd) {
    openSection();
    EXPECT_FALSE(item("addDrive").isEnabled());
    machine.attach("Archive");
    advance(5s);
    EXPECT_TRUE(item("addDrive").isEnabled());
    manager().drives().add({"/Volumes/Archive", "Archive"});
    settle();
    EXPECT_FALSE(item("addDrive").isEnabled());
    EXPECT_FALSE(isShown("noDrives"));
}

TEST_F(PanelDrives, LeadsTheKeyboardFromADriveThatIsRemovedToTheNext) {
    openSection();
    for (const char* name : {"A", "B", "C"}) {
        manager().drives().add({QStringLiteral("/Volumes/") + name, name});
    }
    settle();
    allShown("removeDrive").at(1)->forceActiveFocus(Qt::TabFocusReason);
    const QStringList warnings = warningsOf([this] { press(Qt::Key_Space); });
    EXPECT_EQ(warnings.join('\n').toStdString(), "");
    EXPECT_THAT(chosen(), testing::ElementsAre("/Volumes/A", "/Volumes/C"));
    ASSERT_NE(focused(), nullptr);
    EXPECT_EQ(focused()->property("text"), "Remove C");
    EXPECT_TRUE(focused()->property("visualFocus").toBool());
    press(Qt::Key_Space);
    // There is no drive to add.
    ASSERT_NE(focused(), nullptr);
    EXPECT_EQ(focused()->objectName(), "60");
    EXPECT_TRUE(item("refreshEvery").isAncestorOf(focused()));
}

TEST_F(PanelDrives, LeadsTheKeyboardFromTheLastDriveToTheOnesToAdd) {
    machine.attach("Archive");
    openSection();
    manager().drives().add({"/Volumes/Archive", "Archive"});
    settle();
    item("removeDrive").forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);
    ASSERT_NE(focused(), nullptr);
    EXPECT_EQ(focused()->objectName(), "addDrive");
}

TEST_F(PanelDrives, LeadsTheKeyboardOnWhenTheLastDriveWasAdded) {
    machine.attach("Archive");
    openSection();
    item("addDrive").forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Down);
    waitForPopups();
    press(Qt::Key_Return);
    waitForPopups();
    EXPECT_THAT(chosen(), testing::ElementsAre("/Volumes/Archive"));
    ASSERT_NE(focused(), nullptr);
    EXPECT_TRUE(item("refreshEvery").isAncestorOf(focused()));
    EXPECT_TRUE(focused()->property("visualFocus").toBool());
}

TEST_F(PanelDrives, LeavesTheKeyboardAtADriveThatComesBack) {
    openSection();
    manager().drives().add({"/Volumes/Archive", "Archive"});
    settle();
    QQuickItem* button = &item("removeDrive");
    button->forceActiveFocus(Qt::TabFocusReason);
    const QStringList warnings = warningsOf([&] {
        machine.attach("Archive");
        advance(5s);
    });
    EXPECT_EQ(item("driveSymbol").property("name"), "externaldrive.fill");
    EXPECT_EQ(focused(), button);
    EXPECT_EQ(warnings.join('\n').toStdString(), "");
}

TEST_F(PanelDrives, ShowsWhichDriveIsGone) {
    machine.attach("Archive");
    openSection();
    manager().drives().add({"/Volumes/Archive", "Archive"});
    settle();
    EXPECT_EQ(item("driveSymbol").property("name"), "externaldrive.fill");
    machine.volumes.setMounted({});
    advance(5s);
    EXPECT_EQ(item("driveSymbol").property("name"), "externaldrive.badge.xmark");
    EXPECT_EQ(text("driveName"), "Archive");
}

TEST_F(PanelDrives, RemovesADrive) {
    openSection();
    manager().drives().add({"/Volumes/Archive", "Archive"});
    settle();
    EXPECT_EQ(text("removeDrive"), "Remove Archive");
    click("removeDrive");
    EXPECT_THAT(chosen(), testing::IsEmpty());
    EXPECT_FALSE(isShown("driveName"));
}

TEST_F(PanelDrives, OfferThreeIntervals) {
    openSection();
    QQuickItem& segments = item("refreshEvery/segments");
    EXPECT_EQ(segments.property("value"), 60);
    for (const auto& [part, seconds] : {std::pair(0.1, 30), std::pair(0.5, 60), std::pair(0.9, 300)}) {
        clickAt({segments.width() * part, segments.height() / 2}, "refreshEvery/segments");
        EXPECT_EQ(manager().drives().intervalSeconds(), seconds);
        EXPECT_EQ(segments.property("value"), seconds);
    }
}

}  // namespace
}  // namespace corvane
