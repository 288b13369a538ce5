#pragma once

#include "app/awake/PowerInfo.h"
#include "platform/PowerSources.h"

namespace corvane {

/// What the system's power sources come to. Keeps no state; main loop.
struct PowerSource {
    /// Reads afresh. The first source that has a description is the one that counts, whatever it is; without
    /// one, the answer is a computer without a battery. A source that does not say how it is fed is not on
    /// AC.
    static PowerInfo current(const PowerSources& sources);
};

}  // namespace corvane
