#pragma once

#include <QMetaType>
#include <QObject>
#include <optional>

#include "platform/StatusRecord.h"

namespace corvane {

/// One fan as the helper reports it. Speeds in RPM, 0 when unknown.
struct FanInfo {
    Q_GADGET
    Q_PROPERTY(int index MEMBER index)
    Q_PROPERTY(int currentRPM MEMBER currentRPM)
    Q_PROPERTY(int minRPM MEMBER minRPM)
    Q_PROPERTY(int maxRPM MEMBER maxRPM)
    Q_PROPERTY(int targetRPM MEMBER targetRPM)

public:
    int index = 0;
    int currentRPM = 0;
    int minRPM = 0;
    int maxRPM = 0;
    /// 0 when nothing is asked of the fan.
    int targetRPM = 0;

    /// None for a record that lacks the index or one of the first three speeds.
    static std::optional<FanInfo> fromRecord(const StatusRecord& record);

    bool operator==(const FanInfo&) const = default;
};

}  // namespace corvane
