#pragma once

#include <bit>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "helper/FanHelperService.h"
#include "platform/simulated/RecordingLog.h"
#include "platform/simulated/SimulatedMac.h"
#include "platform/simulated/SimulatedSleepSetting.h"
#include "platform/simulated/SimulatedSmc.h"
#include "platform/simulated/VirtualTime.h"
#include "smc/csmc.h"

namespace corvane {

using namespace std::chrono_literals;

/// A reply of the helper.
struct Answer {
    bool ok = false;
    std::string text;

    bool operator==(const Answer&) const = default;
    friend std::ostream& operator<<(std::ostream& out, const Answer& answer) {
        return out << (answer.ok ? "true" : "false") << ", \"" << answer.text << '"';
    }
};

/// A write as the machine's SMC saw it, and when: "F0Tg=2200".
struct Write {
    Duration at{};
    std::string text;
};

/// The fan helper's service on a simulated Mac and virtual time.
class HelperMachine {
public:
    explicit HelperMachine(MacModel model = tinyMac())
        : mac({.model = std::move(model)}, [this] { return time.bootTime(); }) {
        csmc_use_connection(&connection);
        mac.onWrite([this](std::string_view key, std::span<const std::uint8_t> bytes, SmcResult /*result*/) {
            writes.push_back({now(), fmt::format("{}={}", key, valueOf(bytes))});
        });
    }
    HelperMachine(const HelperMachine&) = delete;
    HelperMachine& operator=(const HelperMachine&) = delete;
    ~HelperMachine() { csmc_use_connection(nullptr); }

    /// Starts the service, as it comes up on this machine; what it wrote and logged is kept.
    void start() { service = FanHelperService::create(queue, sleepSetting, log); }

    /// Starts the service on a machine whose every sensor reads `celsius`, and forgets what that wrote and
    /// logged.
    void startAt(float celsius) {
        mac.holdSensorsAt(celsius);
        start();
        forget();
    }

    /// Since this machine was made.
    [[nodiscard]] Duration now() const { return time.bootTime() - madeAt_; }

    void advance(Duration duration) { time.advance(duration); }

    /// Lets time pass with an application that keeps contact every second.
    void advanceInContact(Duration duration) {
        for (; duration > 1s; duration -= 1s) {
            ping();
            advance(1s);
        }
        ping();
        advance(duration);
    }

    // The operations, run at once. Their answers, if any; more than one is a failure.

    std::optional<Answer> ping() {
        return answerTo([&](auto reply) { service->pingWithReply(std::move(reply)); });
    }
    std::optional<Answer> setFloor(double percent) {
        return answerTo(
            [&](auto reply) { service->setFanFloorWithPercentWithReply(percent, std::move(reply)); });
    }
    std::optional<Answer> stopBoost() {
        return answerTo([&](auto reply) { service->stopBoostWithReply(std::move(reply)); });
    }
    std::optional<Answer> setLid(bool on) {
        return answerTo([&](auto reply) { service->setLidStayAwakeWithReply(on, std::move(reply)); });
    }
    StatusRecord status() {
        std::vector<StatusRecord> records;
        service->getStatusWithReply([&](StatusRecord record) { records.push_back(std::move(record)); });
        time.settle();
        EXPECT_EQ(records.size(), 1U);
        return records.at(0);
    }
    bool isBoosted() { return *status().get<bool>(StatusKey::isBoosted); }

    // What was written and logged since it was last forgotten.

    void forget() {
        writes.clear();
        log.clear();
    }
    [[nodiscard]] std::vector<std::string> writtenTexts() const {
        std::vector<std::string> texts;
        for (const Write& write : writes) {
            texts.push_back(write.text);
        }
        return texts;
    }
    /// When `text` was written.
    [[nodiscard]] std::vector<Duration> timesOf(std::string_view text) const {
        std::vector<Duration> times;
        for (const Write& write : writes) {
            if (write.text == text) {
                times.push_back(write.at);
            }
        }
        return times;
    }

    VirtualTime time;
    SimulatedMac mac;
    SimulatedSmc connection{mac};
    VirtualQueue queue{time};
    SimulatedSleepSetting sleepSetting;
    RecordingLog log;
    std::vector<Write> writes;
    std::shared_ptr<FanHelperService> service;

private:
    template <typename Ask>
    std::optional<Answer> answerTo(const Ask& ask) {
        const auto answers = std::make_shared<std::vector<Answer>>();
        ask([answers](bool ok, std::string text) {
            EXPECT_TRUE(answers->empty()) << "a second reply: " << text;
            answers->push_back({ok, std::move(text)});
        });
        time.settle();
        return answers->empty() ? std::nullopt : std::optional(answers->front());
    }

    /// Bytes as they are, floats as their number.
    static float valueOf(std::span<const std::uint8_t> bytes) {
        if (bytes.size() < 4) {
            return static_cast<float>(bytes[0]);
        }
        return std::bit_cast<float>(
            static_cast<std::uint32_t>(bytes[0]) | static_cast<std::uint32_t>(bytes[1]) << 8U |
            static_cast<std::uint32_t>(bytes[2]) << 16U | static_cast<std::uint32_t>(bytes[3]) << 24U);
    }

    BootTime madeAt_ = time.bootTime();
};

/// `tinyMac` with a second fan, from 1500 to 5500 RPM.
inline MacModel twoFanMac() {
    MacModel model = tinyMac();
    model.fans.push_back({1500.0F, 5500.0F});
    return model;
}

/// `tinyMac` with the lower-case mode key.
inline MacModel lowerCaseMac() {
    MacModel model = tinyMac();
    model.modeKeys = ModeKeys::lowerCase;
    return model;
}

/// `tinyMac` with other sensors.
inline MacModel macWithSensors(std::vector<SensorSpec> sensors) {
    MacModel model = tinyMac();
    model.sensors = std::move(sensors);
    return model;
}

}  // namespace corvane
