#include "platform/macos/desktop/CfText.h"

#include <cstddef>
#include <cstdint>

namespace corvane {

CfRef<CFStringRef> cfString(std::string_view text) {
    return CfRef<CFStringRef>(CFStringCreateWithBytes(
        kCFAllocatorDefault, reinterpret_cast<const std::uint8_t*>(text.data()),
        static_cast<CFIndex>(text.size()), kCFStringEncodingUTF8, static_cast<Boolean>(false)));
}

std::optional<std::string> textOf(CFTypeRef object) {
    if (object == nullptr || CFGetTypeID(object) != CFStringGetTypeID()) {
        return std::nullopt;
    }
    const auto string = static_cast<CFStringRef>(object);
    const CFIndex size =
        CFStringGetMaximumSizeForEncoding(CFStringGetLength(string), kCFStringEncodingUTF8) + 1;
    std::string text(static_cast<std::size_t>(size), '\0');
    if (CFStringGetCString(string, text.data(), size, kCFStringEncodingUTF8) == 0) {
        return std::nullopt;
    }
    text.resize(text.find('\0'));
    return text;
}

}  // namespace corvane
