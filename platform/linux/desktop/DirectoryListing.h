#pragma once

#include <cstddef>
#include <string>

namespace corvane {

/// How much of a directory is read: some hundred thousand entries. Nothing is gained by more, and a damaged
/// directory may have no end.
inline constexpr std::size_t maxListedBytes = 8 * 1024 * 1024;

/// Reads the directory at `path` and throws the entries away, without looking at the files they name. Returns
/// how many bytes of entries there were, 0 when it cannot be read. Waits for the drive, for ever if need be.
///
/// A directory that was read before is still in memory, and reading it again reaches no drive. So the
/// beginning of one of its files is read, too, past the system's cache, where there is a file and the file
/// system can do that.
std::size_t listDirectory(const std::string& path);

}  // namespace corvane
