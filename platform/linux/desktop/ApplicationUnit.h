#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// The identifier of the application that a unit of the user's service manager runs; none for a unit that
/// runs none, and for a malformed name. Desktops name such units
/// - app[-LAUNCHER]-ID-RANDOM.scope,
/// - app[-LAUNCHER]-ID[@RANDOM].service, and
/// - dbus-CONNECTION-ID@NUMBER.service for what the message bus started,
/// with everything but letters, digits and ":_." escaped as \xHH in each part. A hyphen of the ID is one of
/// those; only after a launcher that is known to be careless is the rest taken whole.
[[nodiscard]] std::optional<std::string> applicationOfUnit(std::string_view unit);

/// The same for the innermost such unit of a control group's path.
[[nodiscard]] std::optional<std::string> applicationOfControlGroup(std::string_view path);

/// Whether this can be an application's identifier: not empty, short enough, and neither a path nor
/// unprintable.
[[nodiscard]] bool isApplicationIdentifier(std::string_view text);

}  // namespace corvane
