#include "platform/simulated/MacModel.h"

#include <algorithm>
#include <array>

namespace corvane {

namespace {

constexpr ThermalParameters m1MacBookPro13{
    .dieToSink = 1.0, .dieCapacity = 6.0, .sinkCapacity = 60.0, .stillAir = 0.25, .movedAir = 0.13};
constexpr ThermalParameters m1MaxMacBookPro16{
    .dieToSink = 0.25, .dieCapacity = 20.0, .sinkCapacity = 250.0, .stillAir = 0.35, .movedAir = 0.30};
constexpr ThermalParameters m1MacMini{
    .dieToSink = 0.8, .dieCapacity = 6.0, .sinkCapacity = 150.0, .stillAir = 0.45, .movedAir = 0.22};
constexpr ThermalParameters m1MacBookAir{
    .dieToSink = 1.0, .dieCapacity = 6.0, .sinkCapacity = 110.0, .stillAir = 0.34, .movedAir = 0.0};

std::vector<SensorSpec> copyOf(std::span<const SensorSpec> sensors) {
    return {sensors.begin(), sensors.end()};
}

}  // namespace

MacModel macBookPro16() {
    return {.name = "macbook-pro-16",
            .title = "MacBook Pro 16\" (MacBookPro18,2), M1 Max",
            .thermal = m1MaxMacBookPro16,
            .firmware = FirmwareCurve::laptop(),
            .idleWatts = 4.0,
            .gatingWatts = 12.0,
            .fans = {{1499.0F, 5348.0F}, {1499.0F, 5776.0F}},
            .sensors = copyOf(m1ProSensors())};
}

MacModel macBookPro13() {
    return {.name = "macbook-pro-13",
            .title = "MacBook Pro 13\" (MacBookPro17,1), M1",
            .thermal = m1MacBookPro13,
            .firmware = FirmwareCurve::laptop(),
            .idleWatts = 2.0,
            .gatingWatts = 5.0,
            .fans = {{1199.0F, 7199.0F}},
            .sensors = copyOf(m2Sensors())};
}

MacModel macMini() {
    return {.name = "mac-mini",
            .title = "Mac mini (Macmini9,1), M1",
            .thermal = m1MacMini,
            .firmware = FirmwareCurve::desktop(),
            .idleWatts = 3.0,
            .gatingWatts = 5.0,
            .fans = {{1700.0F, 4499.0F}},
            .sensors = copyOf(m2Sensors())};
}

MacModel macBookAir() {
    return {.name = "macbook-air",
            .title = "MacBook Air (Mac14,2), M2",
            .thermal = m1MacBookAir,
            .firmware = FirmwareCurve::laptop(),
            .idleWatts = 1.5,
            .gatingWatts = 5.0,
            .fans = {},
            .forceSwitch = ForceSwitch::absent,
            .sensors = copyOf(m2Sensors())};
}

MacModel macBookPro14M4() {
    return {.name = "macbook-pro-14-m4",
            .title = "MacBook Pro 14\" (Mac16,6), M4 Max",
            .thermal = m1MaxMacBookPro16,
            .firmware = FirmwareCurve::laptop(),
            .idleWatts = 4.0,
            .gatingWatts = 12.0,
            .fans = {{2317.0F, 6898.0F}, {2502.0F, 7450.0F}},
            .forceSwitch = ForceSwitch::required,
            .sensors = copyOf(m4Sensors())};
}

MacModel macBookPro14M5() {
    return {.name = "macbook-pro-14-m5",
            .title = "MacBook Pro 14\" (Mac17,2), M5",
            .thermal = m1MacBookPro13,
            .firmware = FirmwareCurve::laptop(),
            .idleWatts = 2.0,
            .gatingWatts = 6.0,
            .fans = {{2317.0F, 6898.0F}},
            .modeKeys = ModeKeys::lowerCase,
            .forceSwitch = ForceSwitch::absent,
            .sensors = copyOf(m4Sensors())};
}

MacModel tinyMac() {
    return {.name = "tiny",
            .title = "Tiny Mac",
            .thermal = m1MacBookPro13,
            .firmware = FirmwareCurve::laptop(),
            .fans = {{1000.0F, 5000.0F}},
            .sensors = {sensor::die("Tp09", 0.0F)}};
}

std::span<const MacModel> macModels() {
    static const std::array models{macBookPro16(), macBookPro13(),   macMini(),
                                   macBookAir(),   macBookPro14M4(), macBookPro14M5()};
    return models;
}

const MacModel* findMacModel(std::string_view name) {
    const auto models = macModels();
    const auto found = std::ranges::find(models, name, &MacModel::name);
    return found == models.end() ? nullptr : &*found;
}

}  // namespace corvane
