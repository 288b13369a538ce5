#pragma once

#include <cmath>
#include <string>
#include <vector>

#include "platform/StatusRecord.h"
#include "tests/app/fan/SoakDice.h"

namespace corvane {

/// A record that lacks keys, or whose values are of wrong types or make no sense.
inline StatusRecord soakGarbage(SoakDice& dice) {
    StatusRecord record;
    switch (dice.pick(4)) {
        case 0:
            break;
        case 1:
            record.set(StatusKey::isBoosted, dice.oneIn(2));
            record.set(StatusKey::cpuTemp, static_cast<double>(dice.pick(200)) - 50);
            record.set(StatusKey::lidStayAwake, dice.oneIn(2));
            break;
        case 2:
            record.set(StatusKey::fans, std::string("two"));
            record.set(StatusKey::isBoosted, 1);
            record.set(StatusKey::cpuTemp, std::nan(""));
            break;
        default:
            record.set(StatusKey::fans, std::vector<StatusRecord>(3));
            record.set(StatusKey::gpuTemp, 1e300);
            break;
    }
    return record;
}

}  // namespace corvane
