#include <optional>
#include <string>
#include <string_view>

#include "core/ThermalCurve.h"
#include "smc/SmcReading.h"
#include "smc/SmcSession.h"
#include "smc/csmc.h"
#include "smc/diagnostics/PrintLine.h"
#include "smc/diagnostics/diagnostics.h"

namespace corvane {

namespace {

/// A reading from here on, in °C, is no temperature of a working chip.
constexpr double implausibleFromC = 120.0;

struct SafetyReading {
    std::string key;
    double celsius = 0.0;
};

std::string_view familyOf(std::string_view key) {
    if (key.starts_with("Tg")) {
        return "GPU";
    }
    return key.starts_with("Te") ? "E-Core" : "CPU";
}

std::optional<double> readSafetySensor(const char* key) {
    if (!ThermalCurve::isSafetyTempKey(key) || !isFltKey(key)) {
        return std::nullopt;
    }
    const std::optional<float> value = readFinite(key);
    if (!value || static_cast<double>(*value) >= implausibleFromC) {
        return std::nullopt;
    }
    return static_cast<double>(*value);
}

/// Prints every sensor; the hottest, the first of them when several are, or none without a sensor.
std::optional<SafetyReading> printSensors(Console& console) {
    std::optional<SafetyReading> hottest;
    forEachKey([&](const char* key) {
        const std::optional<double> celsius = readSafetySensor(key);
        if (!celsius) {
            return;
        }
        printLine(console, "  {}  {:5.1f}°C   [{}]", key, *celsius, familyOf(key));
        if (!hottest || *celsius > hottest->celsius) {
            hottest = SafetyReading{key, *celsius};
        }
    });
    return hottest;
}

}  // namespace

int runTemps(CommandPlatform& platform) {
    const SmcSession session(platform.makeSmcConnection());
    Console& console = platform.console();
    printLine(console, "=== Safety-Sensoren (CPU-Kerne + GPU) ===");
    if (const std::int32_t code = csmc_open(); code != 0) {
        printErrorLine(console, "csmc_open failed: {}", code);
        return 0;
    }
    if (const std::optional<SafetyReading> hottest = printSensors(console)) {
        printLine(console, "→ Heißester Safety-Sensor: {} = {:.1f}°C → Kurve fordert {:.0f}%, kritisch={}",
                  hottest->key, hottest->celsius, ThermalCurve::requiredPercent(hottest->celsius),
                  ThermalCurve::isCritical(hottest->celsius) ? "JA" : "nein");
    }
    return 0;
}

}  // namespace corvane
