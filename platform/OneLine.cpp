#include "platform/OneLine.h"

#include <algorithm>

namespace corvane {

namespace {

constexpr std::size_t longest = 200;

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

bool isAsciiControl(char byte) {
    return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F;
}

/// At a character boundary.
std::string_view shortened(std::string_view text) {
    std::size_t end = std::min(text.size(), longest);
    while (end > 0 && end < text.size() && isContinuation(text[end])) {
        --end;
    }
    return text.substr(0, end);
}

/// Bytes of the control character or line break that `text` begins with; 0 for any other character.
std::size_t controlLength(std::string_view text) {
    if (isAsciiControl(text.front())) {
        return 1;
    }
    // U+0080 to U+009F.
    if (text.size() >= 2 && text[0] == '\xC2' && static_cast<unsigned char>(text[1]) < 0xA0) {
        return 2;
    }
    // The line and the paragraph separator.
    return text.starts_with("\u2028") || text.starts_with("\u2029") ? 3 : 0;
}

}  // namespace

std::string oneLine(std::string_view text) {
    std::string_view rest = shortened(text);
    const bool isCut = rest.size() < text.size();
    std::string line;
    while (!rest.empty()) {
        const std::size_t control = controlLength(rest);
        line += control == 0 ? rest.front() : ' ';
        rest.remove_prefix(std::max<std::size_t>(control, 1));
    }
    return isCut ? line + "…" : line;
}

}  // namespace corvane
