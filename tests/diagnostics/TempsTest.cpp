#include <cmath>
#include <limits>
#include <string>

#include "smc/diagnostics/diagnostics.h"
#include "tests/diagnostics/DiagnosticsFixture.h"

namespace corvane {
namespace {

constexpr const char* heading = "=== Safety-Sensoren (CPU-Kerne + GPU) ===\n";

MacModel fourFamilies() {
    MacModel model = tinyMac();
    model.sensors = {sensor::die("Tp09", 0.0F), sensor::die("Te05", 0.0F), sensor::die("Tc0a", 0.0F),
                     sensor::die("Tg0f", 0.0F), sensor::die("Ts0P", 0.0F), sensor::die("TP0a", 0.0F)};
    return model;
}

TEST(Temps, ShowsTheOneSensorOfATinyMac) {
    DiagnosticsPlatform platform;
    EXPECT_EQ(runTemps(platform), 0);
    EXPECT_EQ(platform.recording.output,
              "=== Safety-Sensoren (CPU-Kerne + GPU) ===\n"
              "  Tp09   60.0°C   [CPU]\n"
              "→ Heißester Safety-Sensor: Tp09 = 60.0°C → Kurve fordert 0%, kritisch=nein\n");
    EXPECT_EQ(platform.recording.errors, "");
}

TEST(Temps, ListsTheSafetySensorsInTheControllersOrderWithTheirFamilies) {
    DiagnosticsPlatform platform(fourFamilies());
    platform.machine.mac.holdSensor("Te05", 83.5F);
    platform.machine.mac.holdSensor("Tg0f", 5.25F);
    platform.machine.mac.holdSensor("Ts0P", 110.0F);
    EXPECT_EQ(runTemps(platform), 0);
    EXPECT_EQ(platform.recording.output,
              "=== Safety-Sensoren (CPU-Kerne + GPU) ===\n"
              "  Tc0a   60.0°C   [CPU]\n"
              "  Te05   83.5°C   [E-Core]\n"
              "  Tg0f    5.2°C   [GPU]\n"
              "  Tp09   60.0°C   [CPU]\n"
              "→ Heißester Safety-Sensor: Te05 = 83.5°C → Kurve fordert 50%, kritisch=nein\n");
}

TEST(Temps, LeavesOutWhatIs120DegreesOrMoreAndShowsWhatIsLess) {
    DiagnosticsPlatform platform(fourFamilies());
    platform.machine.mac.holdSensor("Tc0a", 120.0F);
    platform.machine.mac.holdSensor("Te05", std::nextafter(120.0F, 0.0F));
    platform.machine.mac.holdSensor("Tg0f", -40.0F);
    platform.machine.mac.holdSensor("Tp09", 100.0F);
    EXPECT_EQ(runTemps(platform), 0);
    EXPECT_EQ(platform.recording.output,
              "=== Safety-Sensoren (CPU-Kerne + GPU) ===\n"
              "  Te05  120.0°C   [E-Core]\n"
              "  Tg0f  -40.0°C   [GPU]\n"
              "  Tp09  100.0°C   [CPU]\n"
              "→ Heißester Safety-Sensor: Te05 = 120.0°C → Kurve fordert 100%, kritisch=JA\n");
}

TEST(Temps, CallsHeatCriticalFromExactly100Degrees) {
    DiagnosticsPlatform platform;
    platform.machine.mac.holdSensorsAt(100.0F);
    runTemps(platform);
    EXPECT_NE(platform.recording.output.find("fordert 100%, kritisch=JA\n"), std::string::npos);

    platform.recording.output.clear();
    platform.machine.mac.holdSensorsAt(std::nextafter(100.0F, 0.0F));
    runTemps(platform);
    EXPECT_NE(platform.recording.output.find("= 100.0°C → Kurve fordert 100%, kritisch=nein\n"),
              std::string::npos);
}

TEST(Temps, RoundsHalvesAsPrintfDoes) {
    DiagnosticsPlatform platform;
    platform.machine.mac.holdSensorsAt(74.875F);  // exactly 12.5 % of the ramp
    runTemps(platform);
    EXPECT_NE(platform.recording.output.find("Tp09 = 74.9°C → Kurve fordert 12%,"), std::string::npos);
}

TEST(Temps, NamesTheFirstOfSeveralHottestSensors) {
    DiagnosticsPlatform platform(fourFamilies());
    runTemps(platform);
    EXPECT_NE(platform.recording.output.find("Sensor: Tc0a = 60.0°C"), std::string::npos);
}

TEST(Temps, LeavesOutSensorsWithoutAFiniteReading) {
    DiagnosticsPlatform platform(fourFamilies());
    platform.machine.mac.holdSensor("Tc0a", std::numeric_limits<float>::quiet_NaN());
    platform.machine.mac.holdSensor("Te05", -std::numeric_limits<float>::infinity());
    platform.machine.mac.setFault("Tg0f", KeyFault::readFails());
    EXPECT_EQ(runTemps(platform), 0);
    EXPECT_EQ(platform.recording.output,
              "=== Safety-Sensoren (CPU-Kerne + GPU) ===\n"
              "  Tp09   60.0°C   [CPU]\n"
              "→ Heißester Safety-Sensor: Tp09 = 60.0°C → Kurve fordert 0%, kritisch=nein\n");
}

TEST(Temps, LeavesOutSensorsOfOtherTypes) {
    MacModel model = tinyMac();
    model.sensors = {sensor::die("Tp01", 0.0F, SensorType::ioft),
                     sensor::die("Tp02", 0.0F, SensorType::si32)};
    DiagnosticsPlatform platform(model);
    EXPECT_EQ(runTemps(platform), 0);
    EXPECT_EQ(platform.recording.output, heading);
}

TEST(Temps, SaysNothingOfAHottestSensorWithoutAny) {
    DiagnosticsPlatform platform;
    platform.machine.mac.setFault("Tp09", KeyFault::vanished());
    EXPECT_EQ(runTemps(platform), 0);
    EXPECT_EQ(platform.recording.output, heading);
    EXPECT_EQ(platform.recording.errors, "");
}

TEST(Temps, SaysWhyThereIsNothingWithoutAController) {
    DiagnosticsPlatform platform;
    platform.machine.mac.setSmcPresent(false);
    EXPECT_EQ(runTemps(platform), 0);
    EXPECT_EQ(platform.recording.output, heading);
    EXPECT_EQ(platform.recording.errors, "csmc_open failed: -1\n");
}

TEST(Temps, WritesNothing) {
    DiagnosticsPlatform platform(macBookPro16());
    runTemps(platform);
    EXPECT_EQ(platform.machine.mac.writeCount(), 0U);
}

}  // namespace
}  // namespace corvane
