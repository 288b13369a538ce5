#include "app/fan/FanInfo.h"

#include <cstdint>

namespace corvane {

std::optional<FanInfo> FanInfo::fromRecord(const StatusRecord& record) {
    const auto* index = record.get<std::int32_t>(StatusKey::index);
    const auto* currentRPM = record.get<std::int32_t>(StatusKey::currentRPM);
    const auto* minRPM = record.get<std::int32_t>(StatusKey::minRPM);
    const auto* maxRPM = record.get<std::int32_t>(StatusKey::maxRPM);
    if (index == nullptr || currentRPM == nullptr || minRPM == nullptr || maxRPM == nullptr) {
        return std::nullopt;
    }
    const auto* targetRPM = record.get<std::int32_t>(StatusKey::targetRPM);
    return FanInfo{*index, *currentRPM, *minRPM, *maxRPM, targetRPM == nullptr ? 0 : *targetRPM};
}

}  // namespace corvane
