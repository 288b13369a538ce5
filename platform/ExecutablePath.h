#pragma once

#include <filesystem>

namespace corvane {

/// The file that this process runs, with symbolic links resolved; empty when the system does not tell.
std::filesystem::path executablePath();

}  // namespace corvane
