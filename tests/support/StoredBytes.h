#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/UserDefaults.h"

namespace corvane {

/// Text as binary data in settings.
inline std::vector<std::byte> bytesOf(std::string_view text) {
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

inline std::string textOf(const std::vector<std::byte>& bytes) {
    std::string text(bytes.size(), '\0');
    std::copy(bytes.begin(), bytes.end(), std::as_writable_bytes(std::span(text)).begin());
    return text;
}

/// The binary data under `key` as text; none for any other value.
inline std::optional<std::string> storedText(const UserDefaults& defaults, std::string_view key) {
    const auto bytes = defaults.get<std::vector<std::byte>>(key);
    return bytes ? std::optional(textOf(*bytes)) : std::nullopt;
}

}  // namespace corvane
