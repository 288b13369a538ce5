#pragma once

#include <future>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <gtest/gtest.h>
#include <sdbus-c++/sdbus-c++.h>

#include "platform/linux/desktop/BusThread.h"
#include "platform/linux/gui/NotifierLink.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/FakeWatcher.h"
#include "tests/support/PrivateBus.h"

namespace corvane {

/// A private bus with the application's status item on it; the test's thread is everybody else.
class NotifierFixture : public testing::Test {
protected:
    void SetUp() override {
        if (bus->problem()) {
            GTEST_SKIP() << *bus->problem();
        }
    }
    ~NotifierFixture() override { endLink(); }

    void begin(NotifierContents contents = {}, NotifierPatience patience = {}) {
        link = std::make_shared<NotifierLink>(
            busThread.context(), HelperBus{"session"}, patience,
            NotifierLink::Events{.shown = [this](bool isShown) { shown.add(isShown); },
                                 .requests = {.activate =
                                                  [this](int x, int y) {
                                                      clicks.add({x, y});
                                                  },
                                              .choose = [this](int id) { choices.add(id); }}});
        busThread.post([this, shared = share(std::move(contents))] { link->start(shared); });
    }

    /// On the watcher's bus, registered.
    void beginShown(NotifierContents contents = {}) {
        watcher.emplace(bus->address());
        begin(std::move(contents));
        ASSERT_TRUE(shown.waitFor(1));
        item = watcher->items().all().front();
    }

    void show(NotifierContents contents) {
        busThread.post([this, shared = share(std::move(contents))] { link->show(shared); });
    }

    void endLink() {
        busThread.post([ended = std::move(link)] {});
        settle();
    }

    /// Waits until the bus thread has done what it was given so far.
    void settle() {
        std::promise<void> done;
        busThread.post([&] { done.set_value(); });
        done.get_future().wait();
    }

    static SharedContents share(NotifierContents contents) {
        return std::make_shared<const NotifierContents>(std::move(contents));
    }

    /// Somebody who asks the item, or its menu.
    std::unique_ptr<sdbus::IProxy> proxyOf(const char* path) {
        if (!caller) {
            caller = HelperBus{bus->address()}.connect();
        }
        return sdbus::createProxy(*caller, item, path);
    }

    /// The name of the error that a call is answered with; "no error" when there is none.
    template <typename... Args>
    std::string errorOf(const char* path, const std::string& interface, const std::string& member,
                        const Args&... args) {
        try {
            proxyOf(path)->callMethod(member).onInterface(interface).withArguments(args...);
            return "no error";
        } catch (const sdbus::Error& error) {
            return error.getName();
        }
    }

    static constexpr const char* invalidArguments = "org.freedesktop.DBus.Error.InvalidArgs";

    std::optional<PrivateBus> bus{std::in_place};
    std::optional<EnvironmentVariable> sessionBus{std::in_place, "DBUS_SESSION_BUS_ADDRESS",
                                                  bus->address().c_str()};
    Notes<bool> shown;
    Notes<std::pair<int, int>> clicks;
    Notes<int> choices;
    std::optional<FakeWatcher> watcher;
    std::string item;
    std::unique_ptr<sdbus::IConnection> caller;
    BusThread busThread;
    std::shared_ptr<NotifierLink> link;
};

}  // namespace corvane
