#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <string>

#include <fmt/format.h>

#include "smc/csmc.h"
#include "smc/diagnostics/FanUnderTest.h"
#include "smc/diagnostics/PrintLine.h"
#include "smc/diagnostics/Restoring.h"
#include "smc/diagnostics/WriteTests.h"

namespace corvane {

namespace {

/// The only modes whose meaning is known. Forced comes last, so that targets are probed on a forced fan where
/// that can be had.
constexpr std::array<std::uint8_t, 2> probedModes = {FanUnderTest::automaticMode, FanUnderTest::forcedMode};
/// RPM. A fan that is faster is probed with its own speed instead: no probe slows a fan down.
constexpr std::array<std::int32_t, 2> probedTargets = {4000, 5000};
/// What `fpe2` holds at most.
constexpr float largestTarget = 16383.0F;
/// Firmware that takes a fan back needs a moment for it.
constexpr Duration settleTime = std::chrono::milliseconds(200);

std::string verdict(bool stuck, const std::string& readback) {
    return stuck ? "✓ STUCK" : "× reverted to " + readback;
}

bool probeModes(CommandPlatform& platform, FanUnderTest& fan) {
    for (const std::uint8_t mode : probedModes) {
        fan.writeMode(mode);
        if (!platform.pause().pause(settleTime)) {
            return false;
        }
        const std::string readback = fmt::format("{}", fan.mode());
        printLine(platform.console(), "  write F0Md={} → readback={} {}", mode, readback,
                  verdict(readback == fmt::format("{}", mode), readback));
    }
    return true;
}

/// The target key's first two bytes as `fpe2`, RPM; 0 when they cannot be read.
double targetAsFpe2(const FanUnderTest& fan) {
    std::array<std::uint8_t, 2> bytes = {};
    csmc_read_raw(fan.targetKey().c_str(), bytes.data(), bytes.size(), nullptr);
    return (bytes[0] * 256 + bytes[1]) / 4.0;
}

bool probeAsFpe2(CommandPlatform& platform, const FanUnderTest& fan, std::int32_t rpm) {
    fan.writeTargetAsFpe2(rpm);
    if (!platform.pause().pause(settleTime)) {
        return false;
    }
    const double readback = targetAsFpe2(fan);
    const std::string shown = fmt::format("{:.0f}", readback);
    printLine(platform.console(), "  write F0Tg={} → readback={:.0f} fpe2≈{} {}", rpm, fan.target(), shown,
              verdict(std::abs(readback - rpm) < 1.0, shown));
    return true;
}

bool probeAsFlt(CommandPlatform& platform, const FanUnderTest& fan, std::int32_t rpm) {
    fan.writeTarget(static_cast<float>(rpm));
    if (!platform.pause().pause(settleTime)) {
        return false;
    }
    const double readback = static_cast<double>(fan.target());
    const std::string shown = fmt::format("{:.0f}", readback);
    printLine(platform.console(), "  write F0Tg={} → readback={} {}", rpm, shown,
              verdict(std::abs(readback - rpm) < 1.0, shown));
    return true;
}

/// What is written as the wrong type means nearly nothing as the right one, so the probe as `flt ` follows.
bool probeTargets(CommandPlatform& platform, const FanUnderTest& fan, float demand) {
    const auto fastest = static_cast<std::int32_t>(std::ceil(std::clamp(demand, 0.0F, largestTarget)));
    return std::ranges::all_of(probedTargets, [&](std::int32_t probed) {
        const std::int32_t rpm = std::max(probed, fastest);
        return probeAsFpe2(platform, fan, rpm) && probeAsFlt(platform, fan, rpm);
    });
}

}  // namespace

TestEnd runProbes(CommandPlatform& platform) {
    Console& console = platform.console();
    FanUnderTest fan(0);
    const float demand = fan.demand();
    platform.pause().holdTerminationSignals();

    printLine(console, "\n=== MODE WRITE PROBE ===");
    printLine(console, "Initial F0Md = {}", fan.savedMode());
    bool ranThrough = probeModes(platform, fan);
    if (ranThrough) {
        printLine(console, "\n=== TARGET WRITE PROBE (current Md={}) ===", fan.mode());
        ranThrough = probeTargets(platform, fan, demand);
    }
    return restoreAll(platform, {&fan, 1}, ranThrough);
}

}  // namespace corvane
