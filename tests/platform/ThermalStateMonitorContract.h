#pragma once

// What every thermal state monitor promises, as a suite that is run over each of them. A rig is made of:
//   ThermalStateMonitor& monitor();
//   void set(ThermalState state);  // the system's state
//   void settle();                 // until the monitor knows of it, and has said so on the main loop

#include <memory>

#include <gtest/gtest.h>

#include "platform/ThermalStateMonitor.h"

namespace corvane {

template <typename Rig>
class ThermalStateMonitorContract : public testing::Test {
protected:
    ThermalStateMonitor& monitor() { return rig.monitor(); }
    std::unique_ptr<Observation> count() {
        return monitor().observe([this] { ++changes; });
    }
    void change(ThermalState state) {
        rig.set(state);
        rig.settle();
    }

    Rig rig;
    int changes = 0;
};

TYPED_TEST_SUITE_P(ThermalStateMonitorContract);

TYPED_TEST_P(ThermalStateMonitorContract, TellsEveryState) {
    for (const ThermalState state :
         {ThermalState::fair, ThermalState::serious, ThermalState::critical, ThermalState::nominal}) {
        this->change(state);
        EXPECT_EQ(this->monitor().state(), state);
    }
}

TYPED_TEST_P(ThermalStateMonitorContract, AnnouncesChangesAlone) {
    const auto observation = this->count();
    this->rig.settle();
    EXPECT_EQ(this->changes, 0);
    this->change(ThermalState::serious);
    EXPECT_EQ(this->changes, 1);
    this->change(ThermalState::serious);
    EXPECT_EQ(this->changes, 1);
    this->change(ThermalState::nominal);
    EXPECT_EQ(this->changes, 2);
}

TYPED_TEST_P(ThermalStateMonitorContract, IsSilentAfterTheObservation) {
    auto observation = this->count();
    this->rig.set(ThermalState::critical);
    observation.reset();
    const int before = this->changes;
    this->rig.settle();
    this->change(ThermalState::fair);
    EXPECT_EQ(this->changes, before);
}

REGISTER_TYPED_TEST_SUITE_P(ThermalStateMonitorContract, TellsEveryState, AnnouncesChangesAlone,
                            IsSilentAfterTheObservation);

}  // namespace corvane
