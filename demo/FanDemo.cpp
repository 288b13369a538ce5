#include "demo/FanDemo.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <utility>
#include <vector>

#include <fmt/format.h>

namespace corvane {

namespace {

using namespace std::chrono_literals;

constexpr int idleSeconds = 3;
constexpr int loadSeconds = 30;
constexpr int patienceSeconds = 240;
constexpr int idleWatts = 2;
constexpr int loadWatts = 110;
constexpr double floorPercent = 60;
constexpr double coolC = 50;

template <typename T>
T valueOr(const StatusRecord& record, std::string_view key, T fallback) {
    const T* value = record.get<T>(key);
    return value == nullptr ? fallback : *value;
}

std::vector<StatusRecord> fansOf(const StatusRecord& status) {
    return valueOr(status, StatusKey::fans, std::vector<StatusRecord>());
}

std::string describeFan(const StatusRecord& fan) {
    return fmt::format("fan {} {:>4} → {:>4} RPM {:<8}", valueOr(fan, StatusKey::index, 0),
                       valueOr(fan, StatusKey::currentRPM, 0), valueOr(fan, StatusKey::targetRPM, 0),
                       valueOr(fan, StatusKey::mode, 0) == 0 ? "firmware" : "forced");
}

std::string describeTemp(const char* name, const double* celsius) {
    return celsius == nullptr ? fmt::format("{}   —", name) : fmt::format("{} {:5.1f} °C", name, *celsius);
}

bool isCool(const StatusRecord& status) {
    return valueOr(status, StatusKey::cpuTemp, coolC) < coolC;
}

bool isWithFirmware(const StatusRecord& status) {
    const auto fans = fansOf(status);
    return !fans.empty() && !valueOr(status, StatusKey::isBoosted, true) &&
           std::all_of(fans.begin(), fans.end(),
                       [](const StatusRecord& fan) { return valueOr(fan, StatusKey::mode, 1) == 0; });
}

void announce(const std::string& text) {
    std::printf("\n%s\n", text.c_str());
}

}  // namespace

FanDemo::FanDemo(HelperProxy& helper, SerialQueue& queue, std::string scenarioPath)
    : helper_(helper), queue_(queue), scenarioPath_(std::move(scenarioPath)) {}

bool FanDemo::run() {
    announce(helper_.ping());
    watch(idleSeconds);

    announce(fmt::format("The Mac gets to work: {} W", loadWatts));
    setLoad(loadWatts);
    watch(idleSeconds);

    announce(helper_.setFanFloor(floorPercent));
    watch(loadSeconds);

    announce(fmt::format("The work is done: {} W", idleWatts));
    setLoad(idleWatts);
    if (!watchUntil(isCool)) {
        announce("The Mac did not cool down.");
        return false;
    }

    announce(helper_.stopBoost());
    const bool isReleased = watchUntil(isWithFirmware);
    announce(isReleased ? "The Mac is cool and its fans are with the firmware."
                        : "The fans were not handed back.");
    return isReleased;
}

void FanDemo::setLoad(int watts) {
    // Written aside and renamed: the simulated Mac never sees half a file.
    const std::string aside = scenarioPath_ + ".new";
    std::ofstream(aside) << "load = " << watts << '\n';
    std::rename(aside.c_str(), scenarioPath_.c_str());
}

void FanDemo::watch(int seconds) {
    for (int i = 0; i < seconds; ++i) {
        showStatus();
        queue_.sleep(1s);
    }
}

bool FanDemo::watchUntil(bool (*isReached)(const StatusRecord& status)) {
    for (int i = 0; i < patienceSeconds; ++i) {
        if (isReached(showStatus())) {
            return true;
        }
        queue_.sleep(1s);
    }
    return false;
}

StatusRecord FanDemo::showStatus() {
    StatusRecord status = helper_.status();
    std::string line = fmt::format("{:>3} s", second_++);
    for (const StatusRecord& fan : fansOf(status)) {
        line += " | " + describeFan(fan);
    }
    line += " | " + describeTemp("CPU", status.get<double>(StatusKey::cpuTemp));
    line += " | " + describeTemp("GPU", status.get<double>(StatusKey::gpuTemp));
    line += fmt::format(" | effective {:>3.0f} % | override {}",
                        valueOr(status, StatusKey::effectivePercent, 0.0),
                        valueOr(status, StatusKey::thermalOverride, false) ? "yes" : "no");
    std::puts(line.c_str());
    std::fflush(stdout);
    return status;
}

}  // namespace corvane
