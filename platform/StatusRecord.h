#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace corvane {

class StatusRecord;

/// A value of a status record. `std::monostate` stands for a value of a type that the protocol does not know,
/// which a reader treats as wrongly typed.
using StatusValue =
    std::variant<std::monostate, bool, std::int32_t, double, std::string, std::vector<StatusRecord>>;

/// A string-keyed dictionary that keeps the order in which it was filled. What a transport delivers may lack
/// keys or hold values of any type; readers check both. A plain value.
class StatusRecord {
public:
    using Entry = std::pair<std::string, StatusValue>;

    StatusRecord() = default;

    /// Appends an entry. A key is set once.
    void set(std::string_view key, StatusValue value);

    /// The value under `key` when it is there and of type `T`, else null. Valid until the record changes.
    template <typename T>
    [[nodiscard]] const T* get(std::string_view key) const {
        const StatusValue* value = find(key);
        return value == nullptr ? nullptr : std::get_if<T>(value);
    }

    [[nodiscard]] bool contains(std::string_view key) const { return find(key) != nullptr; }
    [[nodiscard]] const std::vector<Entry>& entries() const { return entries_; }

private:
    [[nodiscard]] const StatusValue* find(std::string_view key) const;

    std::vector<Entry> entries_;
};

/// Keys of the helper's status record.
namespace StatusKey {

/// Array of fan records, in index order; empty without fans.
inline constexpr std::string_view fans = "fans";
/// Real: the floor last set; 0 when none is held.
inline constexpr std::string_view floorPercent = "floorPercent";
/// Boolean: the control loop runs and holds the fans.
inline constexpr std::string_view isBoosted = "isBoosted";
/// Integer: CPU temperature keys found when the helper started.
inline constexpr std::string_view tempSensorCount = "tempSensorCount";
/// Real: what the last tick applied, the larger of floor and curve; 0 after a release.
inline constexpr std::string_view effectivePercent = "effectivePercent";
/// Boolean: heat makes the fans run noticeably faster than the floor asks.
inline constexpr std::string_view thermalOverride = "thermalOverride";
/// Boolean: system sleep is disabled for the closed lid.
inline constexpr std::string_view lidStayAwake = "lidStayAwake";
/// Real, °C: average of the valid CPU readings; absent without any.
inline constexpr std::string_view cpuTemp = "cpuTemp";
/// Real, °C: the largest of the same readings; absent together with `cpuTemp`.
inline constexpr std::string_view cpuTempMax = "cpuTempMax";
/// Real, °C: average of the valid GPU readings; absent without any.
inline constexpr std::string_view gpuTemp = "gpuTemp";

// Keys of a fan record; all integers. Speeds in RPM, 0 when unknown.
inline constexpr std::string_view index = "index";
inline constexpr std::string_view currentRPM = "currentRPM";
inline constexpr std::string_view minRPM = "minRPM";
inline constexpr std::string_view maxRPM = "maxRPM";
inline constexpr std::string_view targetRPM = "targetRPM";
/// 0 when the firmware drives the fan, 1 when it is forced.
inline constexpr std::string_view mode = "mode";

}  // namespace StatusKey

}  // namespace corvane
