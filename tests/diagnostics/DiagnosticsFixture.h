#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "platform/CommandPlatform.h"
#include "smc/csmc.h"
#include "tests/platform/simulated/SimulatedMacFixture.h"

namespace corvane {

class RecordingConsole final : public Console {
public:
    void print(std::string_view text) override { output += text; }
    void printError(std::string_view text) override { errors += text; }

    std::string output;
    std::string errors;
};

/// Pauses that let virtual time pass. One thing can happen meanwhile, and one termination signal can come.
class VirtualPause final : public InterruptiblePause {
public:
    explicit VirtualPause(VirtualTime& time) : time_(time), start_(time.bootTime()) {}

    /// A termination signal comes `after` the start of the test.
    void signalAfter(Duration after) { signalAt_ = start_ + after; }
    /// `event` happens `after` the start of the test.
    void at(Duration after, std::function<void()> event) {
        eventAt_ = start_ + after;
        event_ = std::move(event);
    }

    void holdTerminationSignals() override { isHolding = true; }

    bool pause(Duration duration) override {
        const BootTime end = time_.bootTime() + duration;
        const bool isCut = isHolding && signalAt_ && *signalAt_ <= end;
        pass(isCut ? *signalAt_ : end);
        return !isCut;
    }

    void wait(Duration duration) override { pass(time_.bootTime() + duration); }

    [[nodiscard]] BootTime bootTime() const override { return time_.bootTime(); }

    bool isHolding = false;

private:
    void pass(BootTime end) {
        if (event_ && eventAt_ <= end) {
            std::exchange(event_, nullptr)();
        }
        time_.advance(std::max(end - time_.bootTime(), Duration::zero()));
    }

    VirtualTime& time_;
    BootTime start_;
    std::optional<BootTime> signalAt_;
    BootTime eventAt_;
    std::function<void()> event_;
};

/// A command's platform on a simulated Mac, by default a tiny one whose sensors read 60 °C, run by root.
struct DiagnosticsPlatform final : CommandPlatform {
    explicit DiagnosticsPlatform(MacModel model = tinyMac()) : machine(std::move(model)) {
        machine.mac.holdSensorsAt(60.0F);
    }

    Console& console() override { return recording; }
    InterruptiblePause& pause() override { return pauses; }
    [[nodiscard]] bool isRoot() const override { return root; }
    std::unique_ptr<SmcConnection> makeSmcConnection() override {
        return std::make_unique<SimulatedSmc>(machine.mac);
    }

    /// From now on `writes` tells of every write as "F0Md=01:00": the key, the bytes, the result. A write
    /// before termination signals are held fails the test.
    void recordWrites() {
        machine.mac.onWrite(
            [this](std::string_view key, std::span<const std::uint8_t> bytes, SmcResult result) {
                EXPECT_TRUE(pauses.isHolding) << "a write while termination signals would end the process";
                std::string write = std::string(key) + "=";
                for (const std::uint8_t byte : bytes) {
                    write += fmt::format("{:02x}", byte);
                }
                writes.push_back(write + fmt::format(":{:02x}", static_cast<int>(result)));
            });
    }

    MacOnVirtualTime machine;
    RecordingConsole recording;
    VirtualPause pauses{machine.time};
    bool root = true;
    std::vector<std::string> writes;
};

/// Number of times `part` occurs in `text`.
inline int occurrences(std::string_view text, std::string_view part) {
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

}  // namespace corvane
