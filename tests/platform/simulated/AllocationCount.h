#pragma once

#include <cstddef>

namespace corvane {

/// How often the whole test program has asked for memory so far.
std::size_t allocationCount();

}  // namespace corvane
