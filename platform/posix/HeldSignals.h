#pragma once

#include <array>
#include <csignal>

namespace corvane {

/// The signals that end the process and that Corvane answers in its own time; a closing terminal sends the
/// last.
inline constexpr std::array terminationSignalNumbers{SIGTERM, SIGINT, SIGHUP};

/// The same as a set.
const sigset_t& terminationSignals();

/// Blocks them in this thread and all it starts from now on. They stay pending until somebody fetches them.
/// Writing to a closed pipe no longer ends the process either.
void blockTerminationSignals();

}  // namespace corvane
