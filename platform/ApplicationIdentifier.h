#pragma once

namespace corvane {

/// What the application is called among programs: its desktop file, its settings folder, what it holds.
constexpr const char* applicationIdentifier = "de.tavrin.corvane";

}  // namespace corvane
