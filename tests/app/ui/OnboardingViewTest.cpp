#include <QColor>
#include <QImage>

#include "tests/app/ui/OnboardingTest.h"
#include "tests/app/ui/contrast.h"

namespace corvane {
namespace {

using OnboardingViewTest = OnboardingTest;

TEST_F(OnboardingViewTest, IsAWindowOfItsSizeInTheMiddleOfTheScreen) {
    open("en");
    EXPECT_EQ(view().size(), QSize(560, 640));
    EXPECT_EQ(view().minimumSize(), view().maximumSize());
    EXPECT_EQ(view().geometry().center(), view().screen()->availableGeometry().center());
    EXPECT_EQ(view().title(), "Willkommen bei Corvane");
    EXPECT_TRUE(view().flags().testFlag(Qt::FramelessWindowHint));
}

TEST_F(OnboardingViewTest, HasItsTitleInBothLanguages) {
    open("de");
    EXPECT_EQ(view().title(), "Willkommen bei Corvane");
}

TEST_F(OnboardingViewTest, ShowsAllPagesInTheirOrder) {
    for (const char* language : {"de", "en"}) {
        introduction.advance(-5);
        open(language);
        const QList<OnboardingPage> pages = introduction.pages();
        for (int page = 0; page < onboardingPageCount; ++page) {
            EXPECT_EQ(introduction.page(), page);
            EXPECT_EQ(text(shownPage() + "/emoji"), pages.at(page).emoji.toStdString());
            EXPECT_EQ(text(shownPage() + "/title"), pages.at(page).title.toStdString());
            EXPECT_EQ(text(shownPage() + "/body"), pages.at(page).body.toStdString());
            go(1);
        }
    }
}

TEST_F(OnboardingViewTest, BreaksLinesOnlyWhereTheTextsDo) {
    for (const char* language : {"de", "en"}) {
        introduction.advance(-5);
        open(language);
        for (int page = 0; page < onboardingPageCount; ++page) {
            for (const char* name : {"/title", "/body"}) {
                const QQuickItem& lines = item(shownPage() + name);
                EXPECT_EQ(lines.property("lineCount").toInt(),
                          lines.property("text").toString().count('\n') + 1)
                    << language << page << name;
            }
            go(1);
        }
    }
}

TEST_F(OnboardingViewTest, HasRoomForEveryPageBetweenItsEdgeAndItsButtons) {
    for (const char* language : {"de", "en"}) {
        introduction.advance(-5);
        open(language);
        const double bottom = item("next").mapToScene(QPointF()).y();
        for (int page = 0; page < onboardingPageCount; ++page) {
            const QQuickItem& body = item(shownPage() + "/body");
            EXPECT_GE(item(shownPage() + "/emoji").mapToScene(QPointF()).y(), 40) << language << page;
            EXPECT_LE(body.mapToScene(QPointF(0, body.height())).y(), bottom - 24) << language << page;
            for (const char* name : {"/title", "/body"}) {
                EXPECT_LE(item(shownPage() + name).property("contentWidth").toDouble(), 480)
                    << language << page << name;
            }
            go(1);
        }
    }
}

TEST_F(OnboardingViewTest, FollowsTheLanguageWhileItIsOpen) {
    open("en");
    go(5);
    EXPECT_EQ(text("page6/title"), "Up in your\nmenu bar");
    EXPECT_EQ(text("next"), "Let's go!");
    speak("de");
    introduction.retranslate();
    settle();
    EXPECT_EQ(text("page6/title"), "Oben in deiner\nMenüleiste");
    EXPECT_EQ(text("next"), "Los geht's!");
    EXPECT_EQ(text("back"), "Zurück");
}

TEST_F(OnboardingViewTest, NamesItsButtonsInGerman) {
    open("de");
    EXPECT_EQ(text("next"), "Weiter");
    EXPECT_EQ(text("back"), "Zurück");
    EXPECT_EQ(text("close"), "Schließen");
    go(5);
    EXPECT_EQ(text("next"), "Los geht's!");
}

TEST_F(OnboardingViewTest, NamesItsButtonsInEnglish) {
    open("en");
    EXPECT_EQ(text("next"), "Next");
    EXPECT_EQ(text("back"), "Back");
    EXPECT_EQ(text("close"), "Close");
    go(5);
    EXPECT_EQ(text("next"), "Let's go!");
}

TEST_F(OnboardingViewTest, GoesOnAndBackWithItsButtons) {
    open("en");
    click("next");
    EXPECT_EQ(introduction.page(), 1);
    EXPECT_TRUE(introduction.goingForward());
    click("next");
    click("back");
    EXPECT_EQ(introduction.page(), 1);
    EXPECT_FALSE(introduction.goingForward());
}

TEST_F(OnboardingViewTest, HasNoWayBackFromTheFirstPageAndMovesNothingForIt) {
    open("en");
    EXPECT_FALSE(isShown("back"));
    const QPointF dots = item("dots").mapToScene(QPointF());
    const QPointF next = item("next").mapToScene(QPointF());
    click("next");
    EXPECT_TRUE(isShown("back"));
    EXPECT_EQ(item("dots").mapToScene(QPointF()), dots);
    EXPECT_EQ(item("next").mapToScene(QPointF()), next);
}

TEST_F(OnboardingViewTest, KeepsTheSizeOfItsLastButton) {
    for (const char* language : {"de", "en"}) {
        introduction.advance(-5);
        open(language);
        const double width = item("next").width();
        go(5);
        EXPECT_EQ(item("next").width(), width) << language;
        EXPECT_LE(item("next").implicitWidth(), width) << language;
    }
}

TEST_F(OnboardingViewTest, FinishesOnTheLastPageAlone) {
    open("en");
    for (int page = 0; page < 5; ++page) {
        EXPECT_EQ(finished, 0);
        click("next");
    }
    EXPECT_EQ(introduction.page(), 5);
    EXPECT_EQ(finished, 0);
    click("next");
    EXPECT_EQ(finished, 1);
    EXPECT_EQ(closed, 0);
}

TEST_F(OnboardingViewTest, ClosesWithItsButton) {
    open("en");
    click("close");
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(finished, 0);
}

TEST_F(OnboardingViewTest, ShowsTheDotOfThePageWiderAndInItsAccent) {
    open("en");
    for (int page = 0; page < onboardingPageCount; ++page) {
        const auto isInPlace = [&] {
            renderAll(view());
            return item("dot" + QString::number(page + 1)).width() == 24;
        };
        EXPECT_TRUE(QTest::qWaitFor(isInPlace));
        const auto accent = item("dots").property("accent").value<QColor>();
        for (int dot = 0; dot < onboardingPageCount; ++dot) {
            const QQuickItem& shown = item("dot" + QString::number(dot + 1));
            EXPECT_EQ(shown.width() > 8, dot == page) << page << dot;
            EXPECT_EQ(shown.property("color").value<QColor>() == accent, dot == page) << page << dot;
        }
        go(1);
    }
}

TEST_F(OnboardingViewTest, LetsThePageComeFromTheSideThatTheUserGoesTo) {
    open("en");
    const auto isUnderWay = [this] { return isShown(shownPage()) && item(shownPage()).x() != 0; };
    introduction.advance(1);
    ASSERT_TRUE(QTest::qWaitFor(isUnderWay));
    EXPECT_GT(item("page2").x(), 0);
    EXPECT_LE(item("page1").x(), 0);
    waitForRest();
    introduction.advance(-1);
    ASSERT_TRUE(QTest::qWaitFor(isUnderWay));
    EXPECT_LT(item("page1").x(), 0);
    EXPECT_GE(item("page2").x(), 0);
    waitForRest();
}

TEST_F(OnboardingViewTest, ComesToRestHoweverFastOneGoesThroughIt) {
    open("en");
    for (const int delta : {1, 1, -1, 1, -1, -1, 1, 1, 1}) {
        introduction.advance(delta);
        QCoreApplication::processEvents();
    }
    waitForRest();
    EXPECT_EQ(introduction.page(), 3);
    EXPECT_EQ(pagesSeen(), 1);
}

TEST_F(OnboardingViewTest, FadesInWithoutMoving) {
    speak("en");
    window = makeOnboardingWindow(mainLoop, lang, introduction, [] {});
    EXPECT_EQ(item("pages").opacity(), 0);
    EXPECT_EQ(item("page1").x(), 0);
    EXPECT_EQ(pagesSeen(), 1);
    window->bringToFront();
    const auto hasAppeared = [this] {
        renderAll(view());
        EXPECT_EQ(item("page1").x(), 0);
        EXPECT_EQ(item("page1").opacity(), 1);
        return item("pages").opacity() == 1;
    };
    EXPECT_TRUE(QTest::qWaitFor(hasAppeared));
}

/// The colours of the page are in place.
class OnboardingColorsTest : public OnboardingTest {
protected:
    void showPage(int page) {
        introduction.advance(page - introduction.page());
        const QColor before = shade();
        const auto isInPlace = [&, frames = 0]() mutable {
            renderAll(view());
            const bool isStill = shade() == last_;
            last_ = shade();
            frames = isStill ? frames + 1 : 0;
            return frames > 20;
        };
        EXPECT_TRUE(QTest::qWaitFor(isInPlace)) << before.name().toStdString();
        waitForRest();
        picture_ = view().grabWindow();
    }

    [[nodiscard]] QColor shade() { return item("background").property("shade").value<QColor>(); }
    /// The background at a height.
    [[nodiscard]] QColor background(double y) const { return picture_.pixelColor(20, qRound(y)); }

private:
    QColor last_;
    QImage picture_;
};

TEST_F(OnboardingColorsTest, FadeFromOnePageToTheNext) {
    open("en");
    showPage(1);
    const QColor before = shade();
    introduction.advance(1);
    EXPECT_EQ(shade(), before) << "at first";
    showPage(2);
    EXPECT_NE(shade(), before);
}

TEST_F(OnboardingColorsTest, AreDarkAndTintedWithTheAccentFromAbove) {
    open("en");
    for (int page = 0; page < onboardingPageCount; ++page) {
        showPage(page);
        EXPECT_LT(background(8).lightness(), 100) << page;
        EXPECT_LT(background(630).lightness(), 40) << page;
        EXPECT_GT(luminance(background(8)), luminance(background(320))) << page;
        EXPECT_GT(luminance(background(320)), luminance(background(630))) << page;
        EXPECT_NEAR(background(8).hueF(), shade().hueF(), 0.05) << page;
    }
}

TEST_F(OnboardingColorsTest, LetEveryTextBeRead) {
    open("en");
    for (int page = 0; page < onboardingPageCount; ++page) {
        showPage(page);
        for (const char* name : {"/title", "/body"}) {
            const QQuickItem& text = item(shownPage() + name);
            EXPECT_GE(
                contrast(text.property("color").value<QColor>(), background(text.mapToScene(QPointF()).y())),
                7)
                << page << name;
        }
        for (const char* name : {"next", "back"}) {
            const QQuickItem& button = item(name);
            const QColor fill = button.property("fill").value<QColor>();
            if (button.isVisible() && fill.alpha() == 255) {
                EXPECT_GE(contrast(button.property("ink").value<QColor>(), fill), 7) << page << name;
            }
        }
    }
}

}  // namespace
}  // namespace corvane
