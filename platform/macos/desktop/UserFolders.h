#pragma once

#include <filesystem>

namespace corvane {

/// The user's own folders. Any thread.
struct UserFolders {
    static std::filesystem::path home();

    /// For temporary files, which other users do not see.
    static std::filesystem::path temporary();
};

}  // namespace corvane
