#include "platform/macos/desktop/MacThermalState.h"

#include <utility>

#import <Foundation/Foundation.h>

#include "platform/macos/desktop/MainLoopNotice.h"

namespace corvane {

MacThermalState::MacThermalState(SerialQueue& mainLoop)
    : announced_(state()),
      notice_(std::make_unique<MainLoopNotice>(NSNotificationCenter.defaultCenter,
                                               NSProcessInfoThermalStateDidChangeNotification, mainLoop,
                                               [this] { readAgain(); })) {}

MacThermalState::~MacThermalState() = default;

ThermalState MacThermalState::state() const {
    switch (NSProcessInfo.processInfo.thermalState) {
        case NSProcessInfoThermalStateNominal:
            return ThermalState::nominal;
        case NSProcessInfoThermalStateFair:
            return ThermalState::fair;
        case NSProcessInfoThermalStateSerious:
            return ThermalState::serious;
        case NSProcessInfoThermalStateCritical:
        default:
            // A state that is not known yet can only be a hotter one.
            return ThermalState::critical;
    }
}

std::unique_ptr<Observation> MacThermalState::observe(std::function<void()> changed) {
    return observers_.add(std::move(changed));
}

void MacThermalState::readAgain() {
    const ThermalState now = state();
    if (std::exchange(announced_, now) != now) {
        observers_.notify();
    }
}

}  // namespace corvane
