#pragma once

#include <functional>

namespace corvane {

/// Looks a variable of the environment up, as `std::getenv` does; null for one that is not set. What it
/// returns is read before the next call.
using EnvironmentLookup = std::function<const char*(const char* name)>;

}  // namespace corvane
