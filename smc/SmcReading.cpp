#include "smc/SmcReading.h"

#include <algorithm>
#include <cmath>

#include "platform/SmcKeyTable.h"
#include "smc/csmc.h"

namespace corvane {

namespace {

/// No machine lists more than a few thousand keys; a count beyond this is a broken reading.
constexpr std::uint32_t maxKeyCount = 65536;
constexpr float intLimit = 2147483648.0F;
constexpr std::uint32_t fltType = fourCharCode("flt ");

}  // namespace

std::optional<float> readFinite(const char* key) {
    std::uint8_t ok = 0;
    const float value = csmc_read_flt(key, &ok);
    return ok != 0 && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<int> readRpm(const char* key) {
    const std::optional<float> value = readFinite(key);
    if (!value || *value >= intLimit || *value < -intLimit) {
        return std::nullopt;
    }
    return static_cast<int>(*value);
}

bool isFltKey(const char* key) {
    std::uint32_t size = 0;
    std::uint32_t type = 0;
    return csmc_key_info(key, &size, &type, nullptr) == 0 && type == fltType && size == 4;
}

void forEachKey(const std::function<void(const char* key)>& visit) {
    const std::uint32_t count = std::min(csmc_key_count(), maxKeyCount);
    for (std::uint32_t index = 0; index < count; ++index) {
        char key[5];
        if (csmc_key_at_index(index, key) == 0) {
            visit(key);
        }
    }
}

}  // namespace corvane
