#pragma once

#include <QDateTime>

#include "platform/SerialQueue.h"

namespace corvane {

/// A calendar time as the toolkit has it, in the local time zone; to the millisecond, rounded down.
inline QDateTime localTime(WallTime time) {
    const auto sinceEpoch = std::chrono::floor<std::chrono::milliseconds>(time.time_since_epoch());
    return QDateTime::fromMSecsSinceEpoch(sinceEpoch.count());
}

}  // namespace corvane
