#pragma once

#include <span>
#include <string>

namespace corvane {

/// What the one executable can be.
enum class Role { daemon, smcWrite, temps, diag, dumpKeys, application };

/// The role that the arguments, without the program's name, ask for. The first is compared exactly; whatever
/// is not asked for is the application.
Role roleFor(std::span<const std::string> arguments);

}  // namespace corvane
