#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <future>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/linux/AsioSerialQueue.h"
#include "platform/linux/desktop/DesktopPowerAssertions.h"
#include "platform/simulated/RecordingLog.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/FakeInhibitor.h"
#include "tests/support/FakeLogind.h"
#include "tests/support/PrivateBus.h"

namespace corvane {

/// Private buses stand in for the session's and the system's. Everything on the main loop is done by
/// `onMain`.
class DesktopPowerAssertionsTest : public testing::Test {
protected:
    using Id = PowerAssertions::Id;
    using Manner = FakeInhibitor::Manner;

    static constexpr const char* systemSleep = PowerAssertions::preventUserIdleSystemSleep;
    static constexpr const char* displaySleep = PowerAssertions::preventUserIdleDisplaySleep;

    void SetUp() override {
        for (const auto* bus : {&sessionBus, &systemBus}) {
            if ((*bus)->problem()) {
                GTEST_SKIP() << *(*bus)->problem();
            }
        }
        logind.emplace(systemBus->address());
    }
    ~DesktopPowerAssertionsTest() override { end(); }

    static constexpr InhibitPatience unhurried{
        .answers = testPatience, .retry = testPatience, .again = testPatience};

    /// Begins, and returns when it is known on the main loop who is there.
    void begin(InhibitPatience patience = unhurried) {
        beginUnknowing(patience);
        settle();
    }
    void beginUnknowing(InhibitPatience patience = unhurried) {
        mainLoop.sync([&] { power.emplace(sessionThread, systemThread, mainLoop, log, patience); });
    }
    void end() {
        mainLoop.sync([this] { power.reset(); });
    }

    std::optional<Id> create(const char* type, const std::string& name) {
        std::optional<Id> id;
        mainLoop.sync([&] { id = power->create(type, name); });
        return id;
    }
    void release(std::optional<Id> id) {
        ASSERT_TRUE(id);
        mainLoop.sync([&] { power->release(*id); });
    }

    /// Waits until the buses' threads and then the main loop have done what they were given so far.
    void settle() {
        for (BusThread* thread : {&sessionThread, &systemThread}) {
            std::promise<void> done;
            thread->post([&] { done.set_value(); });
            done.get_future().wait();
        }
        mainLoop.sync([] {});
    }

    /// Whether that comes true, sooner or later.
    bool becomes(const std::function<bool()>& isSo) {
        const auto end = std::chrono::steady_clock::now() + testPatience;
        while (!isSo() && std::chrono::steady_clock::now() < end) {
            settle();
        }
        return isSo();
    }

    /// The reasons of the login manager's locks that are held.
    [[nodiscard]] std::vector<std::string> locks() const {
        std::vector<std::string> held;
        for (std::size_t i = 0; i < logind->locks().size(); ++i) {
            if (logind->isHeld(i)) {
                held.push_back(logind->request(i));
            }
        }
        return held;
    }
    bool locksBecome(const std::vector<std::string>& expected) {
        return becomes([&] { return locks() == expected; });
    }

    std::optional<PrivateBus> sessionBus{std::in_place};
    std::optional<PrivateBus> systemBus{std::in_place};
    std::optional<EnvironmentVariable> sessionAddress{std::in_place, "DBUS_SESSION_BUS_ADDRESS",
                                                      sessionBus->address().c_str()};
    std::optional<EnvironmentVariable> systemAddress{std::in_place, "DBUS_SYSTEM_BUS_ADDRESS",
                                                     systemBus->address().c_str()};
    std::optional<FakeLogind> logind;
    RecordingLog log;
    AsioSerialQueue mainLoop{"main"};
    BusThread sessionThread;
    BusThread systemThread;
    std::optional<DesktopPowerAssertions> power;
};

}  // namespace corvane
