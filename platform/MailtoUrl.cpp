#include "platform/MailtoUrl.h"

#include <algorithm>
#include <optional>

namespace corvane {

namespace {

/// In bytes; mail programs promise no more than some thousands.
constexpr std::size_t longestMailtoUrl = 2048;

bool isLetterOrDigit(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9');
}

/// All of `text`, which is not empty, is letters, digits and `others`.
bool consistsOf(std::string_view text, std::string_view others) {
    return !text.empty() && std::ranges::all_of(text, [&](char byte) {
        return isLetterOrDigit(byte) || others.find(byte) != std::string_view::npos;
    });
}

/// Takes what is before `mark` from the front of `text`, and the mark too; none when there is no mark.
std::optional<std::string_view> takeUntil(std::string_view& text, char mark) {
    const std::size_t end = text.find(mark);
    if (end == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view front = text.substr(0, end);
    text.remove_prefix(end + 1);
    return front;
}

/// Parts with dots between them.
bool isHost(std::string_view host) {
    while (const auto part = takeUntil(host, '.')) {
        if (!consistsOf(*part, "-")) {
            return false;
        }
    }
    return consistsOf(host, "-");
}

bool isAddress(std::string_view address) {
    const auto recipient = takeUntil(address, '@');
    return recipient && consistsOf(*recipient, "._+-") && isHost(address);
}

std::optional<unsigned> hexDigit(char byte) {
    constexpr std::string_view digits = "0123456789abcdef";
    const std::size_t value = digits.find(byte >= 'A' && byte <= 'F' ? static_cast<char>(byte + 0x20) : byte);
    return value == std::string_view::npos ? std::nullopt : std::optional(static_cast<unsigned>(value));
}

/// "%" and two digits, for a byte that is no control character.
bool isEncodedByte(std::string_view text) {
    if (text.size() < 3 || text[0] != '%') {
        return false;
    }
    const auto high = hexDigit(text[1]);
    const auto low = hexDigit(text[2]);
    if (!high || !low) {
        return false;
    }
    const unsigned code = *high * 16 + *low;
    return code >= 0x20 && code != 0x7f;
}

bool isEncodedText(std::string_view text) {
    while (!text.empty()) {
        const bool isPlain = consistsOf(text.substr(0, 1), "._~-");
        if (!isPlain && !isEncodedByte(text)) {
            return false;
        }
        text.remove_prefix(isPlain ? 1 : 3);
    }
    return true;
}

}  // namespace

bool isMailtoUrl(std::string_view url) {
    constexpr std::string_view scheme = "mailto:";
    constexpr std::string_view subject = "subject=";
    if (url.size() > longestMailtoUrl || !url.starts_with(scheme)) {
        return false;
    }
    url.remove_prefix(scheme.size());
    const auto address = takeUntil(url, '?');
    if (!address) {
        return isAddress(url);
    }
    return isAddress(*address) && url.starts_with(subject) && isEncodedText(url.substr(subject.size()));
}

}  // namespace corvane
