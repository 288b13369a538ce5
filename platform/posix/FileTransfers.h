#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

#include "platform/posix/FileDescriptor.h"

namespace corvane {

/// Reads until `block` is full or the file has ended, and returns how much that is; none on an error, which
/// is in `errno`. A signal in between does not count.
[[nodiscard]] std::optional<std::size_t> readFully(const FileDescriptor& file, std::span<char> block);

/// Writes all of `text`. False on an error, which is in `errno`; some of it may have been written then.
[[nodiscard]] bool writeFully(const FileDescriptor& file, std::string_view text);

}  // namespace corvane
