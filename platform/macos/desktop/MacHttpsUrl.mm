#include "platform/macos/desktop/MacHttpsUrl.h"

#include <algorithm>

#import <Foundation/Foundation.h>

#include "platform/macos/NSStringText.h"

namespace corvane {

namespace {

/// In bytes; servers take no more than some thousands.
constexpr std::size_t longestHttpsUrl = 8192;
constexpr std::string_view httpsScheme = "https://";

/// Newer systems would encode anything else, and open what was not asked for.
bool isOfUrlCharacters(std::string_view text) {
    return std::ranges::all_of(text, [](char byte) {
        return byte > ' ' && byte < '\x7f' &&
               std::string_view("\"<>\\^`{|}").find(byte) == std::string_view::npos;
    });
}

/// Whether a user name, with a password or without, is before the host.
bool hasUser(std::string_view text) {
    const std::string_view authority = text.substr(std::min(httpsScheme.size(), text.size()));
    return authority.substr(0, authority.find_first_of("/?#")).find('@') != std::string_view::npos;
}

}  // namespace

NSURL* httpsUrl(std::string_view text) {
    if (text.size() > longestHttpsUrl || !isOfUrlCharacters(text) || !text.starts_with(httpsScheme) ||
        hasUser(text)) {
        return nil;
    }
    NSURL* url = [NSURL URLWithString:stringOf(text)];
    return url.host.length > 0 ? url : nil;
}

}  // namespace corvane
