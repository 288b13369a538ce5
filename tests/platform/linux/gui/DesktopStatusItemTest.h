#pragma once

#include <algorithm>
#include <chrono>
#include <future>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "platform/linux/gui/DesktopStatusItem.h"
#include "platform/simulated/SimulatedAppearance.h"
#include "tests/platform/linux/gui/GuiLoop.h"
#include "tests/support/FakeWatcher.h"
#include "tests/support/PrivateBus.h"

namespace corvane {

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
            DesktopStatusItem::Options{
                .bus = {bus->address()}, .patience = std::chrono::milliseconds(10), .display = display});
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
        EXPECT_TRUE(loop.runUntil(
            [&] { return answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
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

}  // namespace corvane
