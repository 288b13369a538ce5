#include "tests/platform/linux/gui/DesktopStatusItemTest.h"

#include <QScreen>
#include <limits>

namespace corvane {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

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

}  // namespace
}  // namespace corvane
