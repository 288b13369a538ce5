#include "app/fan/CoolingMode.h"

namespace corvane {

std::string_view rawValue(CoolingMode mode) {
    return mode == CoolingMode::manual ? "manual" : "auto";
}

std::optional<CoolingMode> coolingModeFromRawValue(std::string_view text) {
    for (const CoolingMode mode : {CoolingMode::manual, CoolingMode::automatic}) {
        if (text == rawValue(mode)) {
            return mode;
        }
    }
    return std::nullopt;
}

}  // namespace corvane
