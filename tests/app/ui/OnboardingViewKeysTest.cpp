#include "tests/app/ui/OnboardingTest.h"

namespace corvane {
namespace {

using testing::ElementsAre;

class OnboardingViewKeysTest : public OnboardingTest {
protected:
    /// What Tab, or Shift and Tab, comes to from the next button until it is there again.
    std::vector<std::string> tour(Qt::Key key) {
        item("next").forceActiveFocus(Qt::TabFocusReason);
        std::vector<std::string> stops;
        do {
            press(key);
            stops.push_back(focused());
        } while (stops.back() != "next" && stops.size() < 10);
        return stops;
    }
};

TEST_F(OnboardingViewKeysTest, GoOnAndBackWithTheArrows) {
    open("en");
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    EXPECT_EQ(introduction.page(), 2);
    press(Qt::Key_Left);
    EXPECT_EQ(introduction.page(), 1);
    press(Qt::Key_Left);
    press(Qt::Key_Left);
    EXPECT_EQ(introduction.page(), 0);
}

TEST_F(OnboardingViewKeysTest, DoNotFinishWithAnArrow) {
    open("en");
    for (int times = 0; times < 8; ++times) {
        press(Qt::Key_Right);
    }
    EXPECT_EQ(introduction.page(), 5);
    EXPECT_EQ(finished, 0);
}

TEST_F(OnboardingViewKeysTest, GoOnAndFinishWithReturnEnterAndSpace) {
    open("en");
    int page = 0;
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        press(key);
        EXPECT_EQ(introduction.page(), ++page);
    }
    EXPECT_EQ(finished, 0);
    press(Qt::Key_Return);
    EXPECT_EQ(finished, 1);
}

TEST_F(OnboardingViewKeysTest, TakeAKeyThatIsHeldDownForOnePress) {
    open("en");
    QTest::keyPress(&view(), Qt::Key_Return);
    for (int times = 0; times < 9; ++times) {
        QKeyEvent again(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
        QCoreApplication::sendEvent(&view(), &again);
    }
    QTest::keyRelease(&view(), Qt::Key_Return);
    settle();
    EXPECT_EQ(introduction.page(), 1);
    EXPECT_EQ(finished, 0);
}

TEST_F(OnboardingViewKeysTest, CloseWithEscape) {
    open("en");
    press(Qt::Key_Escape);
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(finished, 0);
}

TEST_F(OnboardingViewKeysTest, AreAtTheNextButtonToBeginWith) {
    open("en");
    EXPECT_EQ(focused(), "next");
}

TEST_F(OnboardingViewKeysTest, ReachEverythingWithTab) {
    open("en");
    EXPECT_THAT(tour(Qt::Key_Tab), ElementsAre("close", "next"));
    introduction.advance(1);
    EXPECT_THAT(tour(Qt::Key_Tab), ElementsAre("close", "back", "next"));
    EXPECT_THAT(tour(Qt::Key_Backtab), ElementsAre("back", "close", "next"));
}

TEST_F(OnboardingViewKeysTest, WorkWhereverTheFocusIs) {
    open("en");
    press(Qt::Key_Tab);
    ASSERT_EQ(focused(), "close");
    press(Qt::Key_Right);
    EXPECT_EQ(introduction.page(), 1);
    press(Qt::Key_Return);
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(introduction.page(), 1);
}

TEST_F(OnboardingViewKeysTest, GoBackWithReturnAtTheBackButton) {
    open("en");
    go(2);
    press(Qt::Key_Backtab);
    ASSERT_EQ(focused(), "back");
    press(Qt::Key_Return);
    EXPECT_EQ(introduction.page(), 1);
    EXPECT_EQ(focused(), "back");
}

TEST_F(OnboardingViewKeysTest, LeaveABackButtonThatGoesAwayForTheNextOne) {
    open("en");
    go(1);
    press(Qt::Key_Backtab);
    ASSERT_EQ(focused(), "back");
    press(Qt::Key_Return);
    EXPECT_EQ(introduction.page(), 0);
    EXPECT_EQ(focused(), "next");
    EXPECT_TRUE(item("next").property("visualFocus").toBool());
}

TEST_F(OnboardingViewKeysTest, StayWhereTheyAreWhenTheBackButtonGoesAway) {
    open("en");
    go(1);
    press(Qt::Key_Tab);
    ASSERT_EQ(focused(), "close");
    press(Qt::Key_Left);
    EXPECT_EQ(focused(), "close");
}

class OnboardingViewAccessibilityTest : public OnboardingTest {};

TEST_F(OnboardingViewAccessibilityTest, ReadsAPageAsOneText) {
    open("de");
    EXPECT_EQ(accessible("page1").role(), QAccessible::StaticText);
    EXPECT_EQ(accessibleName("page1"),
              "Willkommen bei Corvane. Dein Mac, deine Regeln. Wach bleiben — sogar zugeklappt —, Lüfter "
              "steuern, Temperaturen im Blick. Alles aus der Menüleiste.");
    introduction.advance(1);
    EXPECT_EQ(accessibleName("page2"),
              "Zugeklappt weiterarbeiten. Das Highlight: Schalter umlegen, Deckel zu — dein Mac läuft "
              "weiter. Ohne externen Monitor, auch auf Akku. Der Upload, der Export, der kleine Server: "
              "alles läuft durch, während Corvane kühlt und bei Hitze oder wenig Akku von selbst stoppt.");
}

TEST_F(OnboardingViewAccessibilityTest, DoesNotReadTheSameTextTwice) {
    open("en");
    QStringList heard;
    forEachShown(*view().contentItem(), [&](QQuickItem& shown) {
        QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&shown);
        if (interface != nullptr && !interface->text(QAccessible::Name).isEmpty()) {
            heard.append(interface->text(QAccessible::Name).left(10));
        }
    });
    EXPECT_EQ(heard, QStringList({"Welcome to", "Page 1 of ", "Next", "Close"}));
}

TEST_F(OnboardingViewAccessibilityTest, HasNothingButThePageThatIsSeen) {
    open("en");
    go(3);
    waitForRest();
    for (int page = 0; page < onboardingPageCount; ++page) {
        EXPECT_EQ(accessible(pageName(page)).state().invisible != 0U, page != 3) << page;
    }
}

TEST_F(OnboardingViewAccessibilityTest, TellsWhereOneIs) {
    open("de");
    EXPECT_EQ(accessible("dots").role(), QAccessible::StaticText);
    EXPECT_EQ(accessibleName("dots"), "Seite 1 von 6");
    go(1);
    EXPECT_EQ(accessibleName("dots"), "Seite 2 von 6");
    speak("en");
    window->language().refresh();
    EXPECT_EQ(accessibleName("dots"), "Page 2 of 6");
}

TEST_F(OnboardingViewAccessibilityTest, HasButtonsThatCanBePressed) {
    open("de");
    go(1);
    for (const auto& [button, name] :
         {std::pair("back", "Zurück"), {"next", "Weiter"}, {"close", "Schließen"}}) {
        EXPECT_EQ(accessible(button).role(), QAccessible::Button);
        EXPECT_EQ(accessibleName(button), name);
    }
    accessible("next").actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    settle();
    EXPECT_EQ(introduction.page(), 2);
    accessible("back").actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    settle();
    EXPECT_EQ(introduction.page(), 1);
    accessible("close").actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    settle();
    EXPECT_EQ(closed, 1);
}

}  // namespace
}  // namespace corvane
