#include <thread>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include "platform/linux/gui/NotifierLink.h"
#include "tests/platform/linux/gui/NotifierFixture.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;
using namespace std::chrono_literals;

class NotifierLinkTest : public NotifierFixture {
protected:
    template <typename Value>
    Value read(const std::string& name) {
        return proxyOf(NotifierObject::path)
            ->getProperty(name)
            .onInterface(NotifierObject::interface)
            .get<Value>();
    }

    /// Counts a signal of the item's from now on.
    void count(const std::string& signal) {
        listener = sdbus::createProxy(HelperBus{bus->address()}.connect(), item, NotifierObject::path);
        listener->uponSignal(signal).onInterface(NotifierObject::interface).call([this] { signals.add(1); });
        listener->finishRegistration();
    }

    Notes<int> signals;
    std::unique_ptr<sdbus::IProxy> listener;
};

TEST_F(NotifierLinkTest, RegistersUnderANameOfItsProcess) {
    beginShown();
    EXPECT_THAT(item, StartsWith(fmt::format("org.kde.StatusNotifierItem-{}-", getpid())));
    EXPECT_THAT(shown.all(), ElementsAre(true));
    EXPECT_EQ(watcher->items().size(), 1U);
}

TEST_F(NotifierLinkTest, RegistersWithAWatcherThatAppearsLater) {
    begin();
    settle();
    EXPECT_THAT(shown.all(), IsEmpty());
    watcher.emplace(bus->address());
    ASSERT_TRUE(shown.waitFor(1));
    EXPECT_THAT(shown.all(), ElementsAre(true));
}

TEST_F(NotifierLinkTest, RegistersAgainWithEachNewWatcher) {
    beginShown();
    for (std::size_t restarts = 1; restarts <= 3; ++restarts) {
        watcher.reset();
        ASSERT_TRUE(shown.waitFor(2 * restarts));
        watcher.emplace(bus->address());
        ASSERT_TRUE(shown.waitFor(2 * restarts + 1));
        EXPECT_THAT(watcher->items().all(), ElementsAre(item));
    }
    EXPECT_THAT(shown.all(), ElementsAre(true, false, true, false, true, false, true));
}

TEST_F(NotifierLinkTest, TriesAgainWithAWatcherThatRefuses) {
    watcher.emplace(bus->address(), true, 2);
    begin({}, {.answers = testPatience, .retry = 10ms});
    ASSERT_TRUE(shown.waitFor(1));
    EXPECT_EQ(watcher->items().size(), 3U);
    EXPECT_THAT(shown.all(), ElementsAre(true));
}

TEST_F(NotifierLinkTest, IsShownOnlyWhileTheWatcherHasAHost) {
    watcher.emplace(bus->address(), false);
    begin();
    ASSERT_TRUE(watcher->items().waitFor(1));
    settle();
    EXPECT_THAT(shown.all(), IsEmpty());
    watcher->setHost(true);
    ASSERT_TRUE(shown.waitFor(1));
    watcher->setHost(false);
    ASSERT_TRUE(shown.waitFor(2));
    EXPECT_THAT(shown.all(), ElementsAre(true, false));
}

TEST_F(NotifierLinkTest, DescribesItself) {
    beginShown();
    EXPECT_EQ(read<std::string>("Category"), "SystemServices");
    EXPECT_EQ(read<std::string>("Id"), "de.tavrin.corvane");
    EXPECT_EQ(read<std::string>("Title"), "Corvane");
    EXPECT_EQ(read<std::string>("Status"), "Active");
    EXPECT_EQ(read<std::string>("IconName"), "");
    EXPECT_EQ(read<std::int32_t>("WindowId"), 0);
    EXPECT_FALSE(read<bool>("ItemIsMenu"));
    EXPECT_EQ(read<sdbus::ObjectPath>("Menu"), "/StatusNotifierItem/Menu");
}

using Pixmap = sdbus::Struct<std::int32_t, std::int32_t, std::vector<std::uint8_t>>;
using ToolTip = sdbus::Struct<std::string, std::vector<Pixmap>, std::string, std::string>;

TEST_F(NotifierLinkTest, ShowsItsImagesAndToolTip) {
    beginShown({.pixmaps = {{1, 1, {255, 1, 2, 3}}, {2, 1, {255, 1, 2, 3, 0, 4, 5, 6}}},
                .toolTipTitle = "Corvane",
                .toolTipText = "1 < 2 & 3",
                .menu = {}});
    const auto pixmaps = read<std::vector<Pixmap>>("IconPixmap");
    ASSERT_EQ(pixmaps.size(), 2U);
    EXPECT_EQ(pixmaps[0], Pixmap(1, 1, {255, 1, 2, 3}));
    EXPECT_EQ(pixmaps[1], Pixmap(2, 1, {255, 1, 2, 3, 0, 4, 5, 6}));
    const auto toolTip = read<ToolTip>("ToolTip");
    EXPECT_EQ(toolTip.get<2>(), "Corvane");
    EXPECT_EQ(toolTip.get<3>(), "1 &lt; 2 &amp; 3") << "hosts read it as markup";
}

TEST_F(NotifierLinkTest, TellsOfAnotherImageOnce) {
    beginShown({.pixmaps = {{1, 1, {255, 1, 2, 3}}}, .toolTipTitle = "", .toolTipText = "", .menu = {}});
    count("NewIcon");
    const NotifierContents other{
        .pixmaps = {{1, 1, {255, 9, 9, 9}}}, .toolTipTitle = "", .toolTipText = "", .menu = {}};
    show(other);
    ASSERT_TRUE(signals.waitFor(1));
    EXPECT_EQ(read<std::vector<Pixmap>>("IconPixmap").at(0), Pixmap(1, 1, {255, 9, 9, 9}));
    show(other);
    NotifierContents third = other;
    third.pixmaps.clear();
    show(third);
    ASSERT_TRUE(signals.waitFor(2));
    EXPECT_EQ(signals.size(), 2U) << "the same image is no news";
}

TEST_F(NotifierLinkTest, TellsOfAnotherToolTip) {
    beginShown();
    count("NewToolTip");
    show({.pixmaps = {}, .toolTipTitle = "Corvane", .toolTipText = "", .menu = {}});
    ASSERT_TRUE(signals.waitFor(1));
    EXPECT_EQ(read<ToolTip>("ToolTip").get<2>(), "Corvane");
}

TEST_F(NotifierLinkTest, PassesEveryKindOfClickOn) {
    beginShown();
    int x = 0;
    for (const char* click : {"Activate", "SecondaryActivate", "ContextMenu"}) {
        EXPECT_EQ(errorOf(NotifierObject::path, NotifierObject::interface, click, ++x, 20), "no error");
    }
    EXPECT_EQ(errorOf(NotifierObject::path, NotifierObject::interface, "Scroll", 1, std::string("vertical")),
              "no error");
    ASSERT_TRUE(clicks.waitFor(3));
    EXPECT_THAT(clicks.all(), ElementsAre(std::pair(1, 20), std::pair(2, 20), std::pair(3, 20)));
}

TEST_F(NotifierLinkTest, AnswersMalformedCallsWithErrorsAndGoesOn) {
    beginShown();
    const auto answer = [&](const std::string& member, const auto&... args) {
        return errorOf(NotifierObject::path, NotifierObject::interface, member, args...);
    };
    EXPECT_EQ(answer("Activate"), invalidArguments);
    EXPECT_EQ(answer("Activate", std::string("left"), std::string("top")), invalidArguments);
    EXPECT_EQ(answer("Scroll", 1.0), invalidArguments);
    EXPECT_EQ(answer("Explode"), "org.freedesktop.DBus.Error.UnknownMethod");
    EXPECT_THAT(clicks.all(), IsEmpty());
    EXPECT_EQ(answer("Activate", 1, 2), "no error");
    EXPECT_TRUE(clicks.waitFor(1));
}

TEST_F(NotifierLinkTest, ComesBackWithANewBus) {
    watcher.emplace(bus->address());
    begin({}, {.answers = testPatience, .retry = 10ms});
    ASSERT_TRUE(shown.waitFor(1));
    watcher.reset();
    ASSERT_TRUE(shown.waitFor(2));
    sessionBus.reset();
    bus.emplace();
    ASSERT_EQ(bus->problem(), std::nullopt);
    sessionBus.emplace("DBUS_SESSION_BUS_ADDRESS", bus->address().c_str());
    watcher.emplace(bus->address());
    ASSERT_TRUE(shown.waitFor(3));
    EXPECT_EQ(watcher->items().size(), 1U);
    EXPECT_THAT(shown.all(), ElementsAre(true, false, true));
}

TEST_F(NotifierLinkTest, IsNotShownOnceTheBusHasGone) {
    // The watcher lives on the bus, whose end it would not survive.
    const HelperBus address{bus->address()};
    const auto connection = address.connect();
    const auto object = sdbus::createObject(*connection, "/StatusNotifierWatcher");
    object->registerMethod("RegisterStatusNotifierItem")
        .onInterface("org.kde.StatusNotifierWatcher")
        .implementedAs([](const std::string&) {});
    object->finishRegistration();
    connection->requestName("org.kde.StatusNotifierWatcher");
    begin({}, {.answers = testPatience, .retry = 10ms});
    while (shown.size() == 0) {
        if (!connection->processPendingRequest()) {
            std::this_thread::yield();
        }
    }
    bus->end();
    ASSERT_TRUE(shown.waitFor(2));
    EXPECT_THAT(shown.all(), ElementsAre(true, false));
    show({.pixmaps = {}, .toolTipTitle = "without a bus", .toolTipText = "", .menu = {}});
    settle();
}

TEST_F(NotifierLinkTest, ShowsWhatWasLastHandedOverWhenTheBusComes) {
    begin({.pixmaps = {}, .toolTipTitle = "first", .toolTipText = "", .menu = {}});
    show({.pixmaps = {}, .toolTipTitle = "second", .toolTipText = "", .menu = {}});
    watcher.emplace(bus->address());
    ASSERT_TRUE(shown.waitFor(1));
    item = watcher->items().all().front();
    EXPECT_EQ(read<ToolTip>("ToolTip").get<2>(), "second");
}

}  // namespace
}  // namespace corvane
