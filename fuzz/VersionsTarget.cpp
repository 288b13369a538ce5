#include <array>
#include <compare>

#include <fmt/format.h>

#include "app/shell/compareVersions.h"
#include "fuzz/faultOf.h"

namespace corvane {

namespace {

/// Three versions, a line each; what is missing is empty.
std::array<std::string_view, 3> versionsIn(std::string_view data) {
    std::array<std::string_view, 3> versions;
    for (std::string_view& version : versions) {
        const std::size_t end = data.find('\n');
        version = data.substr(0, end);
        data.remove_prefix(end == std::string_view::npos ? data.size() : end + 1);
    }
    return versions;
}

bool isBeforeOrEquivalent(std::string_view left, std::string_view right) {
    return std::is_lteq(compareVersions(left, right));
}

}  // namespace

/// The comparison must be an order: of a version with itself, of two, and of three.
std::string faultOf(std::string_view data) {
    const std::array<std::string_view, 3> versions = versionsIn(data);
    for (const std::string_view a : versions) {
        if (std::is_neq(compareVersions(a, a))) {
            return fmt::format("'{}' is not itself", a);
        }
        for (const std::string_view b : versions) {
            if (std::is_lt(compareVersions(a, b)) != std::is_gt(compareVersions(b, a))) {
                return fmt::format("'{}' and '{}' depend on who is asked first", a, b);
            }
            for (const std::string_view c : versions) {
                if (isBeforeOrEquivalent(a, b) && isBeforeOrEquivalent(b, c) && !isBeforeOrEquivalent(a, c)) {
                    return fmt::format("'{}', '{}' and '{}' go round in a circle", a, b, c);
                }
            }
        }
    }
    return "";
}

}  // namespace corvane
