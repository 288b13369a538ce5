#pragma once

#include <functional>

namespace corvane {

/// Runs work soon, at the priority of what the user does not wait for, on some thread of the system's. Pieces
/// of work do not wait for each other. Any thread.
void runInBackground(std::function<void()> work);

}  // namespace corvane
