#pragma once

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/app/fan/FanMachine.h"
#include "tests/support/SignalCount.h"

namespace corvane {

/// A record of just these entries.
inline StatusRecord recordOf(const std::vector<StatusRecord::Entry>& entries) {
    StatusRecord record;
    for (const auto& [key, value] : entries) {
        record.set(key, value);
    }
    return record;
}

/// What a helper reports of one fan from 1000 to 5000 RPM.
inline StatusRecord fanRecord(std::int32_t index, std::int32_t currentRPM, std::int32_t targetRPM = 0) {
    return recordOf({{"index", index},
                     {"currentRPM", currentRPM},
                     {"minRPM", 1000},
                     {"maxRPM", 5000},
                     {"targetRPM", targetRPM}});
}

/// A record that tells of these fans and of nothing else.
inline StatusRecord fansRecord(std::vector<StatusRecord> fans) {
    return recordOf({{"fans", std::move(fans)}});
}

inline StatusRecord cpuRecord(double celsius) {
    return recordOf({{"cpuTemp", celsius}});
}

/// A fan machine whose application gets the records that the test makes, empty ones to begin with.
class ReportedMachine : public FanMachine {
public:
    ReportedMachine() {
        report([] { return StatusRecord(); });
    }

    /// The next poll, and every later one, brings `record`.
    void receive(StatusRecord record) {
        report([record = std::move(record)] { return record; });
        advance(1s);
    }
    void receive(const std::vector<StatusRecord::Entry>& entries) { receive(recordOf(entries)); }

    /// `value` under `key` in this many records in a row.
    void receiveTimes(int times, const StatusRecord& record) {
        for (int i = 0; i < times; ++i) {
            receive(record);
        }
    }

    [[nodiscard]] std::string message() const { return fan->statusMessage().toStdString(); }
};

}  // namespace corvane
