#include "bench/TickRig.h"

#include <stdexcept>
#include <utility>

#include <fmt/format.h>

#include "platform/linux/hwmon/DirectorySysfs.h"
#include "platform/linux/hwmon/HwmonSmc.h"
#include "platform/simulated/SimulatedSmc.h"
#include "smc/csmc.h"

namespace corvane {

namespace {

constexpr double floorPercent = 40.0;

/// The 16" machine with exactly as many sensors as the tree has.
MacModel modelOfTreeSize() {
    MacModel model = macBookPro16();
    model.sensors.clear();
    for (int i = 0; i < HwmonTree::sensors; ++i) {
        model.sensors.push_back(sensor::die(fmt::format("Tp{:02}", i), 0.0F));
    }
    return model;
}

}  // namespace

TickRig::~TickRig() = default;

StatusRecord TickRig::status() {
    StatusRecord answer;
    service_->getStatusWithReply([&answer](StatusRecord status) { answer = std::move(status); });
    return answer;
}

void TickRig::start(std::unique_ptr<SmcConnection> smc) {
    smc_ = std::move(smc);
    csmc_use_connection(smc_.get());
    service_ = FanHelperService::create(queue_, sleepSetting_, log_);
    service_->setFanFloorWithPercentWithReply(floorPercent, [](bool, const std::string&) {});
    const StatusRecord now = status();
    const auto* fans = now.get<std::vector<StatusRecord>>(StatusKey::fans);
    const auto* sensors = now.get<std::int32_t>(StatusKey::tempSensorCount);
    if (fans == nullptr || fans->size() != HwmonTree::fans || sensors == nullptr ||
        *sensors != HwmonTree::sensors) {
        throw std::runtime_error("not the machine to measure on");
    }
    for (const StatusRecord& fan : *fans) {
        const auto* mode = fan.get<std::int32_t>(StatusKey::mode);
        if (mode == nullptr || *mode != 1) {
            throw std::runtime_error("the fans are not held");
        }
    }
}

void TickRig::stop() {
    service_.reset();
    csmc_use_connection(nullptr);
    smc_.reset();
}

SimulatedTickRig::SimulatedTickRig()
    : mac_({.model = modelOfTreeSize(), .seed = 1}, [this] { return queue().bootTime(); }) {
    start(std::make_unique<SimulatedSmc>(mac_));
}

HwmonTickRig::HwmonTickRig() {
    start(std::make_unique<HwmonSmc>(
        std::make_unique<CountingSysfs>(std::make_unique<DirectorySysfs>(tree_.root()), mutableSysfsUse()),
        tree_.runFolder() + "/fans", FanOwner::helper, &queue(), log()));
}

}  // namespace corvane
