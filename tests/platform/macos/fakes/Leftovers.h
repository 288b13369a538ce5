#pragma once

#include <functional>
#include <string>
#include <vector>

namespace corvane {

/// What is alive of one kind, described for people, oldest first.
using LiveThings = std::function<std::vector<std::string>()>;

/// From now on each test fails that ends with more of these than it began with. For objects that count their
/// own kind from before `main` until the end; `what` names them in the plural.
void failOnLeftovers(std::string what, LiveThings alive);

}  // namespace corvane
