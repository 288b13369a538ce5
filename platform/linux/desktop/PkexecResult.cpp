#include "platform/linux/desktop/PkexecResult.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include <fmt/format.h>

namespace corvane {

namespace {

constexpr int dismissed = 126;
constexpr int refused = 127;
constexpr std::string_view refusalStart = "Error executing command as another user: ";
/// In bytes; enough for a sentence with a path in it.
constexpr std::size_t longestMessage = 300;

constexpr std::string_view blanks = " \t\r\n";

/// Empty when there is none.
std::string_view lastLine(std::string_view text) {
    const std::size_t end = text.find_last_not_of(blanks);
    if (end == std::string_view::npos) {
        return {};
    }
    text = text.substr(0, end + 1);
    const std::size_t lineEnd = text.rfind('\n');
    return lineEnd == std::string_view::npos ? text : text.substr(lineEnd + 1);
}

/// pkexec's own reason, after which it writes more; empty when it gave none.
std::string_view refusal(std::string_view text) {
    const std::size_t start = text.rfind(refusalStart);
    if (start == std::string_view::npos) {
        return {};
    }
    text.remove_prefix(start + refusalStart.size());
    return text.substr(0, text.find('\n'));
}

/// Cut, where it must be, between two letters of UTF-8; without control characters.
std::string tamed(std::string_view line) {
    std::size_t size = std::min(line.size(), longestMessage);
    while (size < line.size() && size > 0 && (static_cast<unsigned char>(line[size]) & 0xC0U) == 0x80U) {
        --size;
    }
    std::string text(line.substr(0, size));
    std::replace_if(
        text.begin(), text.end(),
        [](char character) { return static_cast<unsigned char>(character) < 0x20U || character == 0x7F; },
        ' ');
    return text;
}

std::string messageOf(int status, std::string_view errors) {
    if (status == refused) {
        if (const std::string_view reason = refusal(errors); !reason.empty()) {
            return tamed(reason);
        }
    }
    if (const std::string_view line = lastLine(errors); !line.empty()) {
        return tamed(line);
    }
    return status == refused ? "Not authorized"
                             : fmt::format("the installation ended with status {}", status);
}

}  // namespace

InstallResult pkexecResult(int status, std::string_view errors) {
    switch (status) {
        case 0:
            return InstallResult::success();
        case dismissed:
            return InstallResult::cancelled();
        default:
            return InstallResult::failure(messageOf(status, errors));
    }
}

}  // namespace corvane
