#pragma once

#include <string_view>

#include "platform/simulated/ScenarioText.h"
#include "platform/simulated/Surroundings.h"

namespace corvane {

/// Takes one line of a control file about the surroundings; what is objected to changes nothing. A name that
/// is not among theirs is objected to as well.
Objection takeSurroundings(Surroundings& surroundings, std::string_view name, std::string_view value);

}  // namespace corvane
