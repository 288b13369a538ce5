#include "platform/linux/desktop/ApplicationUnit.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace corvane {

namespace {

/// A unit's name has at most 255 bytes, and so has a file's.
constexpr std::size_t longestName = 255;

constexpr std::string_view desktopSuffix = ".desktop";

/// Those that leave hyphens of the identifier as they are.
constexpr std::array<std::string_view, 3> carelessLaunchers = {"flatpak-", "gnome-", "KDE-"};

/// Takes `suffix` off; false when it is not there.
bool takeOff(std::string_view& text, std::string_view suffix) {
    const bool isThere = text.ends_with(suffix);
    text.remove_suffix(isThere ? suffix.size() : 0);
    return isThere;
}

/// Splits off what comes after the last `separator`; false when there is none or nothing comes after it.
bool takeOffPart(std::string_view& text, char separator) {
    const std::size_t at = text.rfind(separator);
    const bool isThere = at != std::string_view::npos && at + 1 < text.size();
    text = isThere ? text.substr(0, at) : text;
    return isThere;
}

std::string_view withoutLauncher(std::string_view text) {
    for (const std::string_view launcher : carelessLaunchers) {
        if (text.starts_with(launcher)) {
            return text.substr(launcher.size());
        }
    }
    return text.substr(text.rfind('-') + 1);
}

std::optional<char> escapedByte(std::string_view text) {
    unsigned value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value, 16);
    return error == std::errc() && stop == end ? std::optional(static_cast<char>(value)) : std::nullopt;
}

std::optional<std::string> unescaped(std::string_view text) {
    constexpr std::size_t escapeLength = 4;
    std::string plain;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '\\') {
            plain += text[at];
            continue;
        }
        const std::string_view escape = text.substr(at, escapeLength);
        const auto byte = escape.starts_with("\\x") && escape.size() == escapeLength
                              ? escapedByte(escape.substr(2))
                              : std::nullopt;
        if (!byte) {
            return std::nullopt;
        }
        plain += *byte;
        at += escapeLength - 1;
    }
    return plain;
}

/// The escaped identifier in the name; empty when there is none.
std::string_view identifierIn(std::string_view unit) {
    constexpr std::string_view applicationPrefix = "app-";
    constexpr std::string_view busPrefix = "dbus-";
    if (unit.starts_with(applicationPrefix)) {
        std::string_view rest = unit.substr(applicationPrefix.size());
        if (takeOff(rest, ".scope")) {
            return takeOffPart(rest, '-') ? withoutLauncher(rest) : std::string_view();
        }
        if (takeOff(rest, ".service")) {
            takeOffPart(rest, '@');
            return withoutLauncher(rest);
        }
    } else if (unit.starts_with(busPrefix)) {
        std::string_view rest = unit.substr(busPrefix.size());
        const std::size_t connectionEnd = rest.find('-');
        if (takeOff(rest, ".service") && takeOffPart(rest, '@') && connectionEnd < rest.size()) {
            return rest.substr(connectionEnd + 1);
        }
    }
    return {};
}

}  // namespace

bool isApplicationIdentifier(std::string_view text) {
    const auto isFit = [](char character) {
        const auto byte = static_cast<unsigned char>(character);
        return byte >= 0x20 && byte != 0x7f && character != '/';
    };
    return !text.empty() && text.size() <= longestName && std::ranges::all_of(text, isFit);
}

std::optional<std::string> applicationOfUnit(std::string_view unit) {
    if (unit.size() > longestName) {
        return std::nullopt;
    }
    std::optional<std::string> identifier = unescaped(identifierIn(unit));
    if (identifier && identifier->ends_with(desktopSuffix)) {
        identifier->resize(identifier->size() - desktopSuffix.size());
    }
    return identifier && isApplicationIdentifier(*identifier) ? std::move(identifier) : std::nullopt;
}

std::optional<std::string> applicationOfControlGroup(std::string_view path) {
    while (!path.empty()) {
        const std::size_t slash = path.rfind('/');
        const bool isLast = slash == std::string_view::npos;
        if (auto identifier = applicationOfUnit(isLast ? path : path.substr(slash + 1))) {
            return identifier;
        }
        path = isLast ? std::string_view() : path.substr(0, slash);
    }
    return std::nullopt;
}

}  // namespace corvane
