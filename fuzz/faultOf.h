#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// What a target looks for: feeds `data`, which may be anything, to the code under test and says what must
/// not be so of the outcome; empty when all is well. Each target defines it.
std::string faultOf(std::string_view data);

}  // namespace corvane
