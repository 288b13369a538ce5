#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "helper/runDaemon.h"
#include "platform/simulated/SimulatedMac.h"
#include "platform/simulated/SimulatedSleepSetting.h"
#include "platform/simulated/SimulatedSmc.h"
#include "platform/simulated/VirtualTime.h"

namespace corvane {

using namespace std::chrono_literals;

/// Everything that happened, in order: log lines as they are, the platform's own events in brackets.
class EventLog final : public Log {
public:
    void write(std::string_view line) noexcept override { events.emplace_back(line); }
    std::vector<std::string> events;
};

/// A main loop on virtual time, which gives up after an hour. Its script is work put on `script`.
class TestMainLoop final : public MainLoop {
public:
    TestMainLoop(VirtualTime& time, EventLog& log) : script(time), time_(time), log_(log) {}

    void holdTerminationSignals() override {
        log_.write("[signals held]");
        held_ = true;
    }
    void onTerminationSignal(std::function<void()> handler) override {
        log_.write("[signals handled]");
        handler_ = std::move(handler);
    }
    int run() override {
        log_.write("[main loop]");
        const BootTime end = time_.bootTime() + 1h;
        while (!status_ && time_.bootTime() < end) {
            for (; handler_ && waiting_ > 0; --waiting_) {
                handler_();
            }
            time_.advance(10ms);
        }
        EXPECT_TRUE(status_) << "the main loop was never left";
        return status_.value_or(-1);
    }
    void exit(int status) override { status_ = status_.value_or(status); }
    [[nodiscard]] bool wasLeft() const { return status_.has_value(); }

    /// A termination signal arrives.
    void raise() {
        ASSERT_TRUE(held_) << "the signal would have ended the process";
        ++waiting_;
    }
    void raiseAfter(Duration delay) {
        scripted(delay, [this] { raise(); });
    }
    void scripted(Duration delay, std::function<void()> work) {
        timers_.push_back(script.after(delay, std::move(work)));
    }

    VirtualQueue script;

private:
    VirtualTime& time_;
    EventLog& log_;
    bool held_ = false;
    int waiting_ = 0;
    std::function<void()> handler_;
    std::optional<int> status_;
    std::vector<std::unique_ptr<Timer>> timers_;
};

/// A platform for the helper made of a simulated Mac, virtual time and ends that a test can pull.
class TestHelperPlatform final : public HelperPlatform {
public:
    explicit TestHelperPlatform(MacModel model = tinyMac())
        : mac({.model = std::move(model)}, [this] { return time.bootTime(); }) {
        mac.holdSensorsAt(60.0F);
    }

    Log& log() override { return events; }
    MainLoop& mainLoop() override { return loop; }
    [[nodiscard]] UserIds userIds() const override { return {.uid = 1000, .euid = 0}; }

    std::unique_ptr<SerialQueue> makeQueue(std::string_view label) override {
        events.write(fmt::format("[queue {}]", label));
        auto made = std::make_unique<VirtualQueue>(time);
        queue = made.get();
        return made;
    }
    std::unique_ptr<SmcConnection> makeSmcConnection(SerialQueue& smcQueue) override {
        EXPECT_EQ(&smcQueue, queue);
        events.write("[SMC]");
        if (signalDuringStart) {
            loop.raise();
        }
        return std::make_unique<SimulatedSmc>(mac);
    }
    std::unique_ptr<SystemSleepSetting> makeSystemSleepSetting() override {
        events.write("[sleep setting]");
        return std::make_unique<Forwarding>(sleepSetting);
    }
    std::unique_ptr<SuspendObserver> makeSuspendObserver() override {
        events.write("[suspend observer]");
        return std::make_unique<Observer>(*this);
    }
    std::unique_ptr<ServiceWatchdog> makeServiceWatchdog() override {
        events.write("[service watchdog]");
        return std::make_unique<Watchdog>(*this);
    }
    std::unique_ptr<HelperListener> makeListener() override { return std::make_unique<Listener>(*this); }

    /// Lets the application connect and ask, at a moment of the run.
    void ask(Duration delay, std::function<void(FanHelperProtocol&)> question) {
        loop.scripted(delay, [this, question = std::move(question)] {
            ASSERT_NE(delegate, nullptr) << "nobody listens";
            question(*delegate->acceptConnection());
        });
    }
    void boostAfter(Duration delay) {
        ask(delay, [](FanHelperProtocol& helper) {
            helper.setFanFloorWithPercentWithReply(30.0, [](bool /*ok*/, const std::string& /*text*/) {});
        });
    }

    [[nodiscard]] Duration now() const { return time.bootTime() - madeAt_; }
    [[nodiscard]] std::size_t count(std::string_view text) const {
        return static_cast<std::size_t>(std::ranges::count_if(
            events.events, [&](const std::string& event) { return event.find(text) != std::string::npos; }));
    }

    // The order matters: queues go before the time they live on.
    VirtualTime time;
    EventLog events;
    TestMainLoop loop{time, events};
    SimulatedMac mac;
    SimulatedSleepSetting sleepSetting;
    VirtualQueue* queue = nullptr;

    bool signalDuringStart = false;
    std::optional<std::string> listenFailure;
    Duration watchdogInterval{};
    std::vector<Duration> fedAt;
    HelperListenerDelegate* delegate = nullptr;
    std::function<void()> beforeSuspend;
    std::function<void()> afterResume;

private:
    class Forwarding final : public SystemSleepSetting {
    public:
        explicit Forwarding(SimulatedSleepSetting& setting) : setting_(setting) {}
        std::optional<std::string> setSleepDisabled(bool disabled) override {
            return setting_.setSleepDisabled(disabled);
        }

    private:
        SimulatedSleepSetting& setting_;
    };

    class Observer final : public SuspendObserver {
    public:
        explicit Observer(TestHelperPlatform& platform) : platform_(platform) {}
        void observe(std::function<void()> before, std::function<void()> after) override {
            platform_.beforeSuspend = std::move(before);
            platform_.afterResume = std::move(after);
        }

    private:
        TestHelperPlatform& platform_;
    };

    class Watchdog final : public ServiceWatchdog {
    public:
        explicit Watchdog(TestHelperPlatform& platform) : platform_(platform) {}
        [[nodiscard]] Duration interval() const override { return platform_.watchdogInterval; }
        void feed() override { platform_.fedAt.push_back(platform_.now()); }

    private:
        TestHelperPlatform& platform_;
    };

    class Listener final : public HelperListener {
    public:
        explicit Listener(TestHelperPlatform& platform) : platform_(platform) {
            platform_.events.write("[listener]");
        }
        Listener(const Listener&) = delete;
        Listener& operator=(const Listener&) = delete;
        ~Listener() override {
            platform_.events.write("[listener gone]");
            platform_.delegate = nullptr;
        }
        std::optional<std::string> resume(HelperListenerDelegate& accepting) override {
            platform_.events.write("[listener resumed]");
            if (!platform_.listenFailure) {
                platform_.delegate = &accepting;
            }
            return platform_.listenFailure;
        }

    private:
        TestHelperPlatform& platform_;
    };

    BootTime madeAt_ = time.bootTime();
};

}  // namespace corvane
