#include "smc/diagnostics/FanReport.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "smc/SmcReading.h"
#include "smc/csmc.h"
#include "smc/diagnostics/FanKey.h"
#include "smc/diagnostics/KeyDescription.h"
#include "smc/diagnostics/PrintLine.h"

namespace corvane {

namespace {

constexpr std::array<std::string_view, 4> speedEndings = {"Ac", "Mn", "Mx", "Tg"};
constexpr std::string_view modeEnding = "Md";

std::optional<float> readSpeed(int fan, std::string_view ending) {
    return readFinite(fanKey(fan, ending).c_str());
}

void printSpeed(Console& console, int fan, std::string_view ending, std::string_view label) {
    printLine(console, "{} = {:.1f}", label, readSpeed(fan, ending).value_or(0.0F));
}

void printSpeeds(Console& console, int fan) {
    const std::optional<float> current = readSpeed(fan, "Ac");
    printLine(console, "Ac (current) = {:.1f} rpm ok={}", current.value_or(0.0F), current.has_value());
    printSpeed(console, fan, "Mn", "Mn (min)    ");
    printSpeed(console, fan, "Mx", "Mx (max)    ");
    printSpeed(console, fan, "Tg", "Tg (target) ");
    printLine(console, "Md (mode)    = {}", csmc_read_u8(fanKey(fan, modeEnding).c_str(), nullptr));
}

}  // namespace

void printFanKeys(Console& console, int fan) {
    for (const std::string_view ending : speedEndings) {
        printLine(console, "  {}", describeKey(fanKey(fan, ending).c_str()));
    }
    printLine(console, "  {}", describeKey(fanKey(fan, modeEnding).c_str()));
}

void printFanBlock(Console& console, int fan) {
    printLine(console, "\n--- Fan {}", fan);
    printFanKeys(console, fan);
    printSpeeds(console, fan);
}

void printFanFloats(Console& console, int fan) {
    for (const std::string_view ending : speedEndings) {
        const std::optional<float> value = readSpeed(fan, ending);
        printLine(console, "  {} = {:.1f}  ok={}", fanKey(fan, ending), value.value_or(0.0F),
                  value.has_value());
    }
}

}  // namespace corvane
