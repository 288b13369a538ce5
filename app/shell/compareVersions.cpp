#include "app/shell/compareVersions.h"

#include <algorithm>

namespace corvane {

namespace {

constexpr std::string_view digits = "0123456789";

bool isDigit(char character) {
    return digits.find(character) != std::string_view::npos;
}

/// Cuts the run of digits that `text` begins with off it; without its leading zeros.
std::string_view takeNumber(std::string_view& text) {
    const std::size_t length = std::min(text.find_first_not_of(digits), text.size());
    std::string_view number = text.substr(0, length);
    text.remove_prefix(length);
    number.remove_prefix(std::min(number.find_first_not_of('0'), number.size()));
    return number;
}

std::weak_ordering compareNumbers(std::string_view left, std::string_view right) {
    const auto byLength = left.size() <=> right.size();
    return byLength != std::strong_ordering::equal ? byLength : left <=> right;
}

/// Cuts off what both begin with, a number each or a character each, and compares it.
std::weak_ordering compareHeads(std::string_view& left, std::string_view& right) {
    if (isDigit(left.front()) && isDigit(right.front())) {
        const std::string_view leftNumber = takeNumber(left);
        return compareNumbers(leftNumber, takeNumber(right));
    }
    // In UTF-8 bytes are in the order of characters.
    const auto order = left.substr(0, 1) <=> right.substr(0, 1);
    left.remove_prefix(1);
    right.remove_prefix(1);
    return order;
}

}  // namespace

std::weak_ordering compareVersions(std::string_view left, std::string_view right) {
    while (!left.empty() && !right.empty()) {
        const std::weak_ordering order = compareHeads(left, right);
        if (order != std::weak_ordering::equivalent) {
            return order;
        }
    }
    return left.size() <=> right.size();
}

}  // namespace corvane
