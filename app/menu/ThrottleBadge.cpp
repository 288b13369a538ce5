#include "app/menu/ThrottleBadge.h"

namespace corvane {

std::optional<ThrottleBadge> ThrottleBadge::infoFor(ThermalState state, const Lang& lang) {
    switch (state) {
        case ThermalState::nominal:
            return std::nullopt;
        case ThermalState::fair:
            return ThrottleBadge{lang.text("Last erhöht", "Elevated"), "yellow"};
        case ThermalState::serious:
            return ThrottleBadge{lang.text("Drosselung", "Throttling"), "orange"};
        case ThermalState::critical:
            return ThrottleBadge{lang.text("Kritisch", "Critical"), "red"};
    }
    return std::nullopt;
}

}  // namespace corvane
