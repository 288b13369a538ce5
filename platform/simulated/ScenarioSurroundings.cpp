#include "platform/simulated/ScenarioSurroundings.h"

#include <string>
#include <utility>
#include <vector>

namespace corvane {

namespace {

SimulatedPowerSources::Descriptions descriptionsOf(const Surroundings& surroundings) {
    if (!surroundings.battery) {
        return {};
    }
    constexpr int full = 100;
    return {PowerSourceDescription{
        .currentCapacity = surroundings.battery,
        .maxCapacity = full,
        .state = surroundings.onMains ? PowerSources::acPower : "Battery Power",
        .isCharging = surroundings.onMains && *surroundings.battery < full,
    }};
}

/// Mounted where Macs mount them.
std::string pathOf(const std::string& volume) {
    return "/Volumes/" + volume;
}

void apply(const std::map<std::string, Surroundings::Drive>& drives, SimulatedVolumes& volumes) {
    std::vector<Volume> mounted;
    for (const auto& [name, drive] : drives) {
        const std::string path = pathOf(name);
        mounted.push_back({.path = path, .name = name, .isInternal = false, .isBrowsable = true});
        if (drive == Surroundings::Drive::hangs) {
            volumes.hang(path);
        } else {
            volumes.letGo(path);
        }
    }
    volumes.setMounted(std::move(mounted));
}

}  // namespace

ScenarioSurroundings::ScenarioSurroundings(SerialQueue& mainLoop, ScenarioReader reader)
    : mainLoop_(mainLoop), reader_(std::move(reader)) {
    followFile();
    timer_ = mainLoop.every(ScenarioReader::interval, ScenarioReader::interval, [this] { followFile(); });
}

void ScenarioSurroundings::followFile() {
    if (std::optional<Scenario> scenario = reader_.changed(mainLoop_.bootTime())) {
        surroundings_ = std::move(scenario->surroundings);
        apply();
    }
}

void ScenarioSurroundings::apply() {
    if (powerSources_ != nullptr) {
        powerSources_->set(descriptionsOf(surroundings_));
    }
    if (volumes_ != nullptr) {
        corvane::apply(surroundings_.drives, *volumes_);
    }
    if (thermalState_ != nullptr) {
        thermalState_->set(surroundings_.thermalState);
    }
    if (displays_ != nullptr) {
        displays_->set(surroundings_.displays);
    }
    if (applications_ != nullptr) {
        applications_->set(surroundings_.applications);
    }
}

std::unique_ptr<PowerSources> ScenarioSurroundings::makePowerSources() {
    auto made = std::make_unique<SimulatedPowerSources>();
    made->set(descriptionsOf(surroundings_));
    powerSources_ = made.get();
    return made;
}

std::unique_ptr<ThermalStateMonitor> ScenarioSurroundings::makeThermalStateMonitor() {
    auto made = std::make_unique<SimulatedThermalState>(surroundings_.thermalState);
    thermalState_ = made.get();
    return made;
}

std::unique_ptr<Displays> ScenarioSurroundings::makeDisplays() {
    auto made = std::make_unique<SimulatedDisplays>();
    made->set(surroundings_.displays);
    displays_ = made.get();
    return made;
}

std::unique_ptr<RunningApplications> ScenarioSurroundings::makeRunningApplications() {
    auto made = std::make_unique<SimulatedRunningApplications>();
    made->set(surroundings_.applications);
    applications_ = made.get();
    return made;
}

std::unique_ptr<Volumes> ScenarioSurroundings::makeVolumes() {
    auto made = std::make_unique<SimulatedVolumes>(mainLoop_);
    corvane::apply(surroundings_.drives, *made);
    volumes_ = made.get();
    return made;
}

}  // namespace corvane
