#pragma once

#include <filesystem>

namespace corvane {

/// Where the user's deleted files wait to be deleted for good. Main loop; a call takes as long as a disk
/// does.
class Trash {
public:
    Trash() = default;
    Trash(const Trash&) = delete;
    Trash& operator=(const Trash&) = delete;
    virtual ~Trash() = default;

    /// Moves a file, or a folder with everything in it, to the trash. Does nothing where nothing is at
    /// `path`, an absolute one; what cannot be moved stays.
    virtual void moveThere(const std::filesystem::path& path) = 0;
};

}  // namespace corvane
