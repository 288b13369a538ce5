// Displays that are made of files come and go; udev's own way of telling of them is used. This program is
// linked to what shows it those files in place of the machine's.

#include <QCoreApplication>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <umockdev.h>

#include "platform/linux/desktop/DrmDisplays.h"
#include "platform/simulated/VirtualTime.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

class DisplayEventsTest : public testing::Test {
protected:
    void SetUp() override {
        testbed = umockdev_testbed_new();
        card = add("drm", "card0", nullptr);
        connector = add("drm", "card0-HDMI-A-1", card.c_str());
        umockdev_testbed_set_attribute(testbed, connector.c_str(), "status", "disconnected\n");
        displays.emplace(mainLoop);
    }

    void TearDown() override {
        displays.reset();
        g_clear_object(&testbed);
    }

    std::string add(const char* subsystem, const char* name, const char* parent) {
        gchar* path = umockdev_testbed_add_device(testbed, subsystem, name, parent, nullptr, nullptr);
        std::string text(path == nullptr ? "" : path);
        g_free(path);
        return text;
    }

    void event(const std::string& device, const char* action = "change") {
        umockdev_testbed_uevent(testbed, device.c_str(), action);
    }

    /// Events have arrived when they are sent. What they cause falls due as time passes.
    static void handleEvents() { QCoreApplication::processEvents(); }

    int argumentCount = 1;
    char programName[5] = "test";
    char* arguments[2] = {programName, nullptr};
    QCoreApplication application{argumentCount, arguments};
    UMockdevTestbed* testbed = nullptr;
    std::string card;
    std::string connector;
    VirtualTime time;
    VirtualQueue mainLoop{time};
    std::optional<DrmDisplays> displays;
};

TEST_F(DisplayEventsTest, TellOfADisplayThatIsPluggedIn) {
    std::vector<std::optional<std::vector<Display>>> seen;
    const auto observation = displays->observe([&] { seen.push_back(displays->online()); });
    umockdev_testbed_set_attribute(testbed, connector.c_str(), "status", "connected\n");
    event(card);
    handleEvents();
    EXPECT_THAT(seen, IsEmpty()) << "more may follow";
    time.advance(DrmDisplays::settlingTime);
    EXPECT_THAT(seen, ElementsAre(Optional(ElementsAre(Display{.isBuiltIn = false}))));
}

TEST_F(DisplayEventsTest, AreAnnouncedOnceForMany) {
    int announced = 0;
    const auto observation = displays->observe([&] { ++announced; });
    for (int count = 0; count < 20; ++count) {
        event(card);
        handleEvents();
        time.advance(DrmDisplays::settlingTime / 40);
    }
    time.advance(DrmDisplays::settlingTime);
    EXPECT_EQ(announced, 1);
    event(card);
    handleEvents();
    time.advance(DrmDisplays::settlingTime);
    EXPECT_EQ(announced, 2);
}

TEST_F(DisplayEventsTest, OfOtherDevicesAreNoNews) {
    const std::string battery = add("power_supply", "BAT0", nullptr);
    int announced = 0;
    const auto observation = displays->observe([&] { ++announced; });
    event(battery);
    handleEvents();
    time.advance(DrmDisplays::settlingTime);
    EXPECT_EQ(announced, 0);
    event(connector, "add");
    handleEvents();
    time.advance(DrmDisplays::settlingTime);
    EXPECT_EQ(announced, 1);
}

TEST_F(DisplayEventsTest, AreNoLongerAnnouncedAfterTheEnd) {
    int announced = 0;
    auto observation = displays->observe([&] { ++announced; });
    event(card);
    handleEvents();
    observation.reset();
    time.advance(DrmDisplays::settlingTime);
    observation = displays->observe([&] { ++announced; });
    event(card);
    handleEvents();
    observation.reset();
    displays.reset();
    time.advance(DrmDisplays::settlingTime);
    EXPECT_EQ(announced, 0);
}

}  // namespace
}  // namespace corvane
