#include <functional>
#include <optional>

#include "tests/platform/linux/gui/DesktopStatusItemTest.h"
#include "tests/platform/linux/gui/FakeTray.h"
#include "tests/support/XServer.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;

/// With an X server, which has a tray or not.
class DesktopStatusItemOnXTest : public DesktopStatusItemTest {
protected:
    void SetUp() override {
        DesktopStatusItemTest::SetUp();
        if (x.problem()) {
            GTEST_SKIP() << *x.problem();
        }
    }

    /// Runs both the application and the tray until `isDone`.
    bool runUntil(const std::function<bool()>& isDone) {
        return loop.runUntil([&] {
            if (tray) {
                tray->work();
            }
            return isDone();
        });
    }

    void openTray() {
        tray.emplace(x.display());
        tray->open();
    }

    bool isDocked() {
        return runUntil([&] { return tray->client() != XCB_WINDOW_NONE; });
    }

    /// In the tray, with all painted that is to come of it.
    void becomesWhite() {
        ASSERT_TRUE(isDocked());
        ASSERT_TRUE(runUntil([&] { return tray->count(0xffffff) > 20; }));
        const int before = tray->count(0xffffff);
        item->setTitle("64°");
        ASSERT_TRUE(runUntil([&] { return tray->count(0xffffff) != before; }));
        item->setTitle("");
        ASSERT_TRUE(runUntil([&] { return tray->count(0xffffff) == before; }));
    }

    XServer x;
    std::optional<FakeTray> tray;
};

TEST_F(DesktopStatusItemOnXTest, GoesIntoTheTrayWithoutAWatcher) {
    openTray();
    begin(x.display());
    ASSERT_TRUE(isDocked());
    EXPECT_TRUE(runUntil([&] { return tray->count(0xffffff) > 20; })) << "the gauge, white";
    EXPECT_GT(tray->count(0x202020), 200) << "the tray shines through";
}

TEST_F(DesktopStatusItemOnXTest, SaysThatItsWindowIsNoPoint) {
    openTray();
    begin(x.display());
    ASSERT_TRUE(isDocked());
    EXPECT_EQ(tray->leastWidth(), 22U) << "trays hide what does not";
}

TEST_F(DesktopStatusItemOnXTest, HasTheColourThatTheTraySays) {
    tray.emplace(x.display());
    tray->setTextColor(0x8080, 0x4040, 0x2020);
    tray->open();
    begin(x.display());
    ASSERT_TRUE(isDocked());
    EXPECT_TRUE(runUntil([&] { return tray->count(0x804020) > 20; }));
}

TEST_F(DesktopStatusItemOnXTest, PaintsWhatChangesAnew) {
    openTray();
    begin(x.display());
    ASSERT_TRUE(isDocked());
    ASSERT_TRUE(runUntil([&] { return tray->count(0xffffff) > 20; }));
    const int before = tray->count(0xffffff);
    item->setTitle("64°");
    EXPECT_TRUE(runUntil([&] { return tray->count(0xffffff) != before; }));
    item->setTitle("");
    EXPECT_TRUE(runUntil([&] { return tray->count(0xffffff) == before; })) << "nothing of the title is left";
}

TEST_F(DesktopStatusItemOnXTest, IsNotPaintedAnewWhileNothingChanges) {
    openTray();
    begin(x.display());
    item->setToolTip("Corvane", "Inactive");
    item->setMenu({{.id = 1, .label = "One"}});
    becomesWhite();
    tray->wipe();
    item->setImage(StatusImage::gauge50);
    item->setTitle(" ");
    item->setToolTip("Corvane", "Inactive");
    item->setMenu({{.id = 1, .label = "One"}});
    bool isDone = false;
    loop.queue().async([&] { isDone = true; });
    ASSERT_TRUE(runUntil([&] { return isDone; }));
    EXPECT_EQ(tray->count(0xffffff), 0);
    item->setImage(StatusImage::gauge100);
    EXPECT_TRUE(runUntil([&] { return tray->count(0xffffff) > 20; }));
}

TEST_F(DesktopStatusItemOnXTest, LosesNoClickThatComesWhileItIsPainted) {
    openTray();
    begin(x.display());
    becomesWhite();
    item->setTitle("64°");
    // After the loop has looked for events of the X server, and before it paints what has changed. Painting
    // waits for the server's answers, which come after the click.
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [&] {
            tray->click(1, 110, 60);
            EXPECT_GT(tray->count(0xffffff), 20) << "the server has sent the click by now";
        },
        Qt::QueuedConnection);
    EXPECT_TRUE(runUntil([&] { return clicks.size() == 1; }));
}

TEST_F(DesktopStatusItemOnXTest, TellsWhereItsWindowWasClickedWithAnyButtonButTheWheel) {
    openTray();
    begin(x.display());
    ASSERT_TRUE(isDocked());
    tray->click(1, 110, 60);
    tray->click(4, 1, 1);
    tray->click(3, 120, 70);
    ASSERT_TRUE(runUntil([&] { return clicks.size() >= 2; }));
    EXPECT_EQ(clicks[0].point, (ScreenPoint{110, 60}));
    EXPECT_EQ(clicks[1].point, (ScreenPoint{120, 70}));
}

TEST_F(DesktopStatusItemOnXTest, GoesIntoATrayThatComesLater) {
    begin(x.display());
    bool isLater = false;
    const auto later = loop.queue().after(50ms, [&] { isLater = true; });
    ASSERT_TRUE(runUntil([&] { return isLater; }));
    openTray();
    EXPECT_TRUE(isDocked());
}

TEST_F(DesktopStatusItemOnXTest, GoesIntoTheNextTrayWhenItsTrayHasGone) {
    openTray();
    begin(x.display());
    ASSERT_TRUE(isDocked());
    tray->close();
    tray.reset();
    openTray();
    EXPECT_TRUE(isDocked());
}

TEST_F(DesktopStatusItemOnXTest, GoesIntoTheNextTrayWhenItsTrayHasCrashed) {
    openTray();
    begin(x.display());
    ASSERT_TRUE(isDocked());
    tray.reset();
    openTray();
    EXPECT_TRUE(isDocked());
}

TEST_F(DesktopStatusItemOnXTest, LeavesTheTrayForAWatcherAndComesBack) {
    openTray();
    begin(x.display());
    ASSERT_TRUE(isDocked());
    watcher.emplace(bus->address());
    ASSERT_TRUE(runUntil([&] { return tray->client() == XCB_WINDOW_NONE; }));
    watcher.reset();
    EXPECT_TRUE(isDocked());
    EXPECT_EQ(tray->taken(), 2);
}

TEST_F(DesktopStatusItemOnXTest, StaysOutOfTheTrayWhileThereIsAWatcher) {
    watcher.emplace(bus->address());
    begin(x.display());
    knowsOfItsHost();
    openTray();
    bool isLater = false;
    const auto later = loop.queue().after(50ms, [&] { isLater = true; });
    ASSERT_TRUE(runUntil([&] { return isLater; }));
    EXPECT_EQ(tray->taken(), 0);
}

TEST_F(DesktopStatusItemOnXTest, SurvivesTheEndOfTheXServer) {
    openTray();
    begin(x.display());
    ASSERT_TRUE(isDocked());
    tray.reset();
    x.end();
    item->setTitle("64°");
    watcher.emplace(bus->address());
    EXPECT_TRUE(isRegistered());
}

TEST_F(DesktopStatusItemOnXTest, SurvivesWithoutAnXServer) {
    begin(":4711");
    bool isLater = false;
    const auto later = loop.queue().after(50ms, [&] { isLater = true; });
    ASSERT_TRUE(runUntil([&] { return isLater; }));
    watcher.emplace(bus->address());
    EXPECT_TRUE(isRegistered());
}

}  // namespace
}  // namespace corvane
