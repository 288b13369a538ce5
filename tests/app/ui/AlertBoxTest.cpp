#include "tests/app/ui/ControlTest.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AlertBoxTest : public ControlTest {
protected:
    AlertBoxTest() {
        load(
            "PanelButton { objectName: 'behind'; text: 'Behind'; width: parent.width; height: parent.height;"
            " onClicked: test.ask('behind') }"
            " AlertBox { objectName: 'alert'; visible: test.state1 === true; title: 'Keep awake?'; text: 'It "
            "gets warm.';"
            " acceptText: 'Enable'; rejectText: 'Cancel'; onAccepted: test.ask('accepted');"
            " onRejected: test.ask('rejected') }");
        setProperty("state1", true);
        EXPECT_TRUE(QTest::qWaitFor([this] { return focused() == "alertAccept"; }));
    }
};

TEST_F(AlertBoxTest, TellsWhichButtonWasClicked) {
    click("alertReject");
    EXPECT_THAT(asked(), ElementsAre("rejected"));
    click("alertAccept");
    EXPECT_THAT(asked(), ElementsAre("accepted"));
}

TEST_F(AlertBoxTest, IsAcceptedWithEnterAndRejectedWithEscape) {
    press(Qt::Key_Return);
    press(Qt::Key_Escape);
    EXPECT_THAT(asked(), ElementsAre("accepted", "rejected"));
}

TEST_F(AlertBoxTest, KeepsTheKeyboardToItself) {
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), "alertReject");
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), "alertAccept");
}

TEST_F(AlertBoxTest, KeepsClicksFromWhatIsBehindIt) {
    QTest::mouseClick(window.get(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
    EXPECT_THAT(asked(), IsEmpty());
    EXPECT_TRUE(isShown("alertAccept"));
}

TEST_F(AlertBoxTest, GoesOnceItIsNotToBeSeen) {
    setProperty("state1", false);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !isShown("alertAccept"); }));
    click("behind");
    EXPECT_THAT(asked(), ElementsAre("behind"));
}

TEST_F(AlertBoxTest, GivesTheKeyboardBackToWhatHadIt) {
    setProperty("state1", false);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !isShown("alertAccept"); }));
    focus("behind");
    setProperty("state1", true);
    ASSERT_TRUE(QTest::qWaitFor([this] { return focused() == "alertAccept"; }));
    setProperty("state1", false);
    EXPECT_TRUE(QTest::qWaitFor([this] { return focused() == "behind"; }));
}

TEST_F(AlertBoxTest, IsHeardAsAnAlertWithItsTitleAndItsText) {
    QAccessibleInterface* alert = nullptr;
    forEachShown(*window->contentItem(), [&](QQuickItem& each) {
        QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(&each);
        if (heard != nullptr && heard->role() == QAccessible::AlertMessage) {
            alert = heard;
        }
    });
    ASSERT_NE(alert, nullptr);
    EXPECT_EQ(alert->text(QAccessible::Name), "Keep awake?");
    EXPECT_EQ(alert->text(QAccessible::Description), "It gets warm.");
}

}  // namespace
}  // namespace corvane
