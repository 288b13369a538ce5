#include <QScreen>
#include <future>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "platform/linux/gui/DesktopStatusItem.h"
#include "platform/simulated/SimulatedAppearance.h"
#include "tests/platform/linux/gui/FakeTray.h"
#include "tests/platform/linux/gui/GuiLoop.h"
#include "tests/support/FakeWatcher.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/XServer.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

using Pixmap = sdbus::Struct<std::int32_t, std::int32_t, std::vector<std::uint8_t>>;

/// A private bus stands in for the session's, and an X server of the test's own for the desktop's.
class DesktopStatusItemTest : public testing::Test {
protected:
    void SetUp() override {
        if (bus->problem()) {
            GTEST_SKIP() << *bus->problem();
        }
    }

    void begin(const std::optional<std::string>& display = std::nullopt) {
        item.emplace(
            busThread, loop.queue(), appearance,
            [this](const char* name) {
                return std::string(name) == "XDG_CURRENT_DESKTOP" ? desktop.c_str() : nullptr;
            },
            DesktopStatusItem::Options{.bus = {bus->address()}, .patience = 10ms, .display = display});
        item->setHandlers({.activated = [this](const StatusItemAnchor& anchor) { clicks.push_back(anchor); },
                           .chosen = [this](int id) { choices.push_back(id); }});
    }

    bool isRegistered() {
        return loop.runUntil([&] { return watcher->items().size() > 0; });
    }

    /// Whoever calls the item over the bus, from a thread of their own while the main loop runs.
    template <typename Call>
    auto asHost(const Call& call) {
        auto answer = std::async(std::launch::async, [&] {
            const auto connection = HelperBus{bus->address()}.connect();
            return call(*connection, watcher->items().all().back());
        });
        EXPECT_TRUE(loop.runUntil([&] { return answer.wait_for(0s) == std::future_status::ready; }));
        return answer.get();
    }

    std::vector<Pixmap> pixmaps() {
        return asHost([](sdbus::IConnection& connection, const std::string& name) {
            return sdbus::createProxy(connection, name, NotifierObject::path)
                ->getProperty("IconPixmap")
                .onInterface(NotifierObject::interface)
                .get<std::vector<Pixmap>>();
        });
    }

    /// Whether this comes to be true of the images that hosts get.
    template <typename Condition>
    bool imagesBecome(const Condition& isGood) {
        const auto end = std::chrono::steady_clock::now() + testPatience;
        while (!isGood(pixmaps())) {
            if (std::chrono::steady_clock::now() > end) {
                return false;
            }
        }
        return true;
    }

    /// The brightest colour in the smallest image.
    int brightness() {
        int brightest = 0;
        const auto image = pixmaps().front().get<2>();
        for (std::size_t i = 0; i < image.size(); i += 4) {
            if (image[i] > 200) {
                brightest = std::max<int>(brightest, image[i + 1]);
            }
        }
        return brightest;
    }

    void activate(int x, int y, int times = 1) {
        asHost([&](sdbus::IConnection& connection, const std::string& name) {
            const auto proxy = sdbus::createProxy(connection, name, NotifierObject::path);
            for (int i = 0; i < times; ++i) {
                proxy->callMethod("Activate").onInterface(NotifierObject::interface).withArguments(x, y);
            }
            return 0;
        });
    }

    void choose(int id) {
        asHost([&](sdbus::IConnection& connection, const std::string& name) {
            sdbus::createProxy(connection, name, NotifierMenu::path)
                ->callMethod("Event")
                .onInterface(NotifierMenu::interface)
                .withArguments(id, std::string("clicked"), sdbus::Variant(std::int32_t{0}), std::uint32_t{0});
            return 0;
        });
    }

    /// Waits until the item knows that somebody shows it: the bus delivers a click after the watcher's answer
    /// to that, which the watcher has given before it answers anybody else.
    void knowsOfItsHost() {
        ASSERT_TRUE(loop.runUntil([&] { return watcher->hostQueries().size() > 0; }));
        asHost([](sdbus::IConnection& connection, const std::string& /*name*/) {
            return sdbus::createProxy(connection, "org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher")
                ->getProperty("IsStatusNotifierHostRegistered")
                .onInterface("org.kde.StatusNotifierWatcher")
                .get<bool>();
        });
        activate(1, 1);
        ASSERT_TRUE(loop.runUntil([&] { return !clicks.empty(); }));
        clicks.clear();
    }

    GuiLoop loop;
    std::optional<PrivateBus> bus{std::in_place};
    SimulatedAppearance appearance;
    std::string desktop = "XFCE";
    std::optional<FakeWatcher> watcher;
    std::vector<StatusItemAnchor> clicks;
    std::vector<int> choices;
    BusThread busThread;
    std::optional<DesktopStatusItem> item;
};

TEST_F(DesktopStatusItemTest, TellsWhereItWasClicked) {
    watcher.emplace(bus->address());
    begin();
    ASSERT_TRUE(isRegistered());
    activate(123, 45);
    ASSERT_TRUE(loop.runUntil([&] { return clicks.size() == 1; }));
    EXPECT_EQ(clicks[0].point, (ScreenPoint{123, 45}));
    activate(0, 0);
    ASSERT_TRUE(loop.runUntil([&] { return clicks.size() == 2; }));
    EXPECT_EQ(clicks[1].point, std::nullopt);
    activate(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    ASSERT_TRUE(loop.runUntil([&] { return clicks.size() == 3; }));
    const QRect screens = QGuiApplication::primaryScreen()->virtualGeometry();
    EXPECT_EQ(clicks[2].point, (ScreenPoint{screens.left(), screens.bottom()}))
        << "as far as there are screens";
}

TEST_F(DesktopStatusItemTest, DropsClicksThatTheMainLoopHasNoTimeFor) {
    watcher.emplace(bus->address());
    begin();
    knowsOfItsHost();
    constexpr int many = 200;
    std::async(std::launch::async, [&] {
        const auto connection = HelperBus{bus->address()}.connect();
        const auto proxy =
            sdbus::createProxy(*connection, watcher->items().all().back(), NotifierObject::path);
        for (int i = 1; i <= many; ++i) {
            proxy->callMethod("Activate").onInterface(NotifierObject::interface).withArguments(i, i);
        }
    }).wait();
    ASSERT_TRUE(loop.runUntil([&] { return clicks.size() >= DesktopStatusItem::maxUnderWay; }));
    EXPECT_EQ(clicks.size(), static_cast<std::size_t>(DesktopStatusItem::maxUnderWay));
    activate(many + 1, 1);
    ASSERT_TRUE(loop.runUntil([&] { return clicks.back().point == ScreenPoint{many + 1, 1}; }));
}

TEST_F(DesktopStatusItemTest, ChoosesOnlyWhatIsOfferedNow) {
    watcher.emplace(bus->address());
    begin();
    item->setMenu({{.id = 1, .label = "One"}, {.id = 2, .label = "Two"}});
    ASSERT_TRUE(isRegistered());
    choose(2);
    ASSERT_TRUE(loop.runUntil([&] { return !choices.empty(); }));
    EXPECT_THAT(choices, ElementsAre(2));
    // The desktop still shows the menu that was there.
    const auto answer = std::async(std::launch::async, [&] {
        const auto connection = HelperBus{bus->address()}.connect();
        sdbus::createProxy(*connection, watcher->items().all().back(), NotifierMenu::path)
            ->callMethod("Event")
            .onInterface(NotifierMenu::interface)
            .withArguments(1, std::string("clicked"), sdbus::Variant(std::int32_t{0}), std::uint32_t{0});
    });
    answer.wait();
    item->setMenu({{.id = 1, .label = "One", .isEnabled = false}, {.id = 2, .label = "Two"}});
    choose(2);
    ASSERT_TRUE(loop.runUntil([&] { return choices.size() == 2; }));
    EXPECT_THAT(choices, ElementsAre(2, 2));
}

TEST_F(DesktopStatusItemTest, ShowsTheImageOfTheMoment) {
    watcher.emplace(bus->address());
    begin();
    ASSERT_TRUE(isRegistered());
    const auto before = pixmaps();
    ASSERT_EQ(before.size(), 5U);
    item->setImage(StatusImage::gauge100);
    EXPECT_TRUE(imagesBecome([&](const auto& now) { return now != before; }));
    item->setImage(StatusImage::gauge50);
    EXPECT_TRUE(imagesBecome([&](const auto& now) { return now == before; }));
}

TEST_F(DesktopStatusItemTest, ShowsItsTitleInTheImage) {
    watcher.emplace(bus->address());
    begin();
    ASSERT_TRUE(isRegistered());
    const auto before = pixmaps();
    item->setTitle(" 64°");
    EXPECT_TRUE(imagesBecome([&](const auto& now) { return now != before; }));
    item->setTitle(" ");
    EXPECT_TRUE(imagesBecome([&](const auto& now) { return now == before; })) << "blanks do not count";
}

TEST_F(DesktopStatusItemTest, IsWhiteOnPanelsThatAreAlwaysDark) {
    watcher.emplace(bus->address());
    begin();
    ASSERT_TRUE(isRegistered());
    EXPECT_EQ(brightness(), 255);
    appearance.setDark(true);
    EXPECT_EQ(brightness(), 255);
}

TEST_F(DesktopStatusItemTest, FollowsTheAppearanceWherePanelsDo) {
    desktop = "KDE";
    watcher.emplace(bus->address());
    begin();
    ASSERT_TRUE(isRegistered());
    EXPECT_LT(brightness(), 64);
    const auto before = pixmaps();
    appearance.setDark(true);
    ASSERT_TRUE(imagesBecome([&](const auto& now) { return now != before; }));
    EXPECT_EQ(brightness(), 255);
}

TEST_F(DesktopStatusItemTest, CanEndWithNewsUnderWay) {
    watcher.emplace(bus->address());
    begin();
    ASSERT_TRUE(isRegistered());
    item->setTitle("1");
    item.reset();
    watcher.reset();
    QCoreApplication::processEvents();
    EXPECT_THAT(clicks, IsEmpty());
}

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
