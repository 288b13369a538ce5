#pragma once

#include <QUrl>
#include <optional>
#include <string>

namespace corvane {

/// An https address as it may be handed to others: well-formed, with a host, without user name and password.
/// None for anything else.
[[nodiscard]] std::optional<QUrl> httpsUrl(const std::string& text);

}  // namespace corvane
