#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace corvane {

/// The value of a `flt ` key. None when it cannot be read or is not a finite number: an infinite or NaN
/// reading is a failed one.
std::optional<float> readFinite(const char* key);

/// An RPM reading without its fraction. None when there is no reading or it is beyond what an integer holds.
std::optional<int> readRpm(const char* key);

/// True for keys whose declared type is `flt ` of 4 bytes.
bool isFltKey(const char* key);

/// Calls `visit` with every key the controller lists, in its order; keys that cannot be fetched are skipped.
void forEachKey(const std::function<void(const char* key)>& visit);

}  // namespace corvane
