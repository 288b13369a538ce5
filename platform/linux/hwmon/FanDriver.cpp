#include "platform/linux/hwmon/FanDriver.h"

namespace corvane {

std::optional<std::int64_t> findValue(const FanOriginals& originals, std::string_view name, std::int64_t low,
                                      std::int64_t high) {
    for (const FanValue& original : originals) {
        if (original.name == name) {
            return original.value >= low && original.value <= high ? std::optional(original.value)
                                                                   : std::nullopt;
        }
    }
    return std::nullopt;
}

}  // namespace corvane
