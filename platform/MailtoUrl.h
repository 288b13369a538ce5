#pragma once

#include <string_view>

namespace corvane {

/// `url` may be handed to the user's mail program: "mailto:", one plain address, and at most a subject,
/// percent-encoded and without control characters. Whatever else such an address can ask for, such as files
/// to attach or further headers, is refused.
[[nodiscard]] bool isMailtoUrl(std::string_view url);

}  // namespace corvane
