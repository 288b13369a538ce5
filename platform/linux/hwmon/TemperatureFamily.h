#pragma once

#include <string_view>

namespace corvane {

/// What a temperature sensor tells about. Only the processor's and the graphics' sensors bear on safety;
/// drives, batteries, radios and boards are left out.
enum class TemperatureFamily { cpu, gpu, other };

/// By the chip's name and the sensor's label, which is empty when there is none.
[[nodiscard]] TemperatureFamily temperatureFamilyOf(std::string_view chip, std::string_view label);

/// Whether a chip belongs to a graphics card.
[[nodiscard]] bool isGraphicsCard(std::string_view chip);

}  // namespace corvane
