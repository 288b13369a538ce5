#pragma once

#include <csignal>

namespace corvane {

/// The signals that end the process and that Corvane answers in its own time: SIGTERM, SIGINT, and SIGHUP,
/// which a closing terminal sends.
const sigset_t& terminationSignals();

/// Blocks them in this thread and all it starts from now on. They stay pending until somebody fetches them.
/// Writing to a closed pipe no longer ends the process either.
void blockTerminationSignals();

}  // namespace corvane
