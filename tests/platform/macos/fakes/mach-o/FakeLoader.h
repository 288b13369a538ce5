#pragma once

#include <string>

namespace corvane {

/// What the loader says the program is, from now on.
void setFakeExecutable(std::string path);

}  // namespace corvane
