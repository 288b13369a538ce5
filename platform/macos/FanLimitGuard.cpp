#include "platform/macos/FanLimitGuard.h"

#include <cstring>
#include <optional>

#include "platform/PlausibleLimits.h"
#include "platform/SmcKeyTable.h"

namespace corvane {

namespace {

constexpr std::uint32_t keyOf(char first, char second, char third, char fourth) {
    return static_cast<std::uint32_t>(first) << 24U | static_cast<std::uint32_t>(second) << 16U |
           static_cast<std::uint32_t>(third) << 8U | static_cast<std::uint32_t>(fourth);
}

/// A key of the fan, such as F0Mn.
constexpr std::uint32_t fanKey(std::uint32_t fan, char third, char fourth) {
    return keyOf('F', static_cast<char>('0' + fan), third, fourth);
}

/// The fan that the record would force, if it would.
std::optional<std::uint32_t> forcedFan(const SmcRecord& record) {
    const std::uint32_t fan = (record.key >> 16U & 0xFFU) - '0';
    const bool isMode =
        fan < 10 && (record.key == fanKey(fan, 'M', 'd') || record.key == fanKey(fan, 'm', 'd'));
    const bool forces =
        record.data8 == static_cast<std::uint8_t>(SmcCommand::writeKey) && record.bytes[0] != 0;
    return isMode && forces ? std::optional(fan) : std::nullopt;
}

}  // namespace

std::int32_t FanLimitGuard::exchange(SmcRecord& record) {
    if (const auto fan = forcedFan(record); fan && !areLimitsKnown(*fan)) {
        record.result = static_cast<std::uint8_t>(SmcResult::badArgument);
        return 0;
    }
    return controller_->exchange(record);
}

bool FanLimitGuard::areLimitsKnown(std::uint32_t fan) {
    bool& known = known_.at(fan);
    known = known || arePlausibleLimits(readFlt(fanKey(fan, 'M', 'n')), readFlt(fanKey(fan, 'M', 'x')));
    return known;
}

std::optional<float> FanLimitGuard::readFlt(std::uint32_t key) {
    SmcRecord info;
    info.key = key;
    info.data8 = static_cast<std::uint8_t>(SmcCommand::keyInfo);
    if (controller_->exchange(info) != 0 || info.result != 0 ||
        info.keyInfo.dataType != fourCharCode("flt ") || info.keyInfo.dataSize != sizeof(float)) {
        return std::nullopt;
    }
    SmcRecord value;
    value.key = key;
    value.keyInfo.dataSize = sizeof(float);
    value.data8 = static_cast<std::uint8_t>(SmcCommand::readKey);
    if (controller_->exchange(value) != 0 || value.result != 0) {
        return std::nullopt;
    }
    float speed = 0;
    std::memcpy(&speed, value.bytes.data(), sizeof speed);
    return speed;
}

}  // namespace corvane
