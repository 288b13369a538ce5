#include "platform/linux/desktop/PkexecResult.h"

#include <cstddef>
#include <string>

#include <fmt/format.h>

#include "platform/OneLine.h"

namespace corvane {

namespace {

constexpr int dismissed = 126;
constexpr int refused = 127;
constexpr std::string_view refusalStart = "Error executing command as another user: ";
constexpr std::string_view outerBlanks = " \t\r\n";

/// Empty when there is none.
std::string_view lastLine(std::string_view text) {
    const std::size_t end = text.find_last_not_of(outerBlanks);
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

std::string messageOf(int status, std::string_view errors, std::string_view work) {
    if (status == refused) {
        if (const std::string_view reason = refusal(errors); !reason.empty()) {
            return oneLine(reason);
        }
    }
    if (const std::string_view line = lastLine(errors); !line.empty()) {
        return oneLine(line);
    }
    return status == refused ? "Not authorized" : fmt::format("{} ended with status {}", work, status);
}

}  // namespace

InstallResult pkexecResult(int status, std::string_view errors, std::string_view work) {
    switch (status) {
        case 0:
            return InstallResult::success();
        case dismissed:
            return InstallResult::cancelled();
        default:
            return InstallResult::failure(messageOf(status, errors, work));
    }
}

}  // namespace corvane
