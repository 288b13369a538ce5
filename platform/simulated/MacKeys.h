#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "platform/SmcKeyTable.h"
#include "platform/simulated/KeyFault.h"
#include "platform/simulated/MacModel.h"

namespace corvane {

/// What a key of the simulated machine stands for.
enum class KeyRole : std::uint8_t {
    keyCount,
    fanCount,
    forceSwitch,
    fanSpeed,
    fanMinimum,
    fanMaximum,
    fanTarget,
    fanMode,
    sensor,
};

/// One key of a machine.
struct MacKey {
    SmcKey key;
    KeyRole role = KeyRole::sensor;
    /// Of the fan, or of the sensor within its model; 0 for the other roles.
    std::size_t index = 0;
};

/// All keys of a machine, ascending by name. Throws `std::invalid_argument` for a model that breaks the rules
/// of `MacModel`.
std::vector<MacKey> keysOf(const MacModel& model);

/// True when `name` (packed) is what `pattern` means: a key's four characters, or its first few and a "*".
bool isMeantBy(std::uint32_t name, std::string_view pattern);

/// True when the fault can show on that key.
bool canHave(const MacKey& key, const KeyFault& fault);

/// Stores `value` as the key's type does; whole numbers are truncated, everything is brought into the type's
/// range, NaN becomes 0 where the type has no NaN. `bytes` has the key's size.
void encodeValue(const SmcKey& key, double value, std::span<std::uint8_t> bytes);

}  // namespace corvane
