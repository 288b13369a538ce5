#include "tests/platform/macos/fakes/Foundation/StringText.h"

#include <algorithm>
#include <cstdio>

#import <Foundation/Foundation.h>
#include <fmt/format.h>

#include "tests/platform/macos/fakes/objc/Complaints.h"

namespace corvane::objc {

namespace {

/// One conversion, such as %-5.2f or %ld.
struct Conversion {
    /// As C has it, null-terminated.
    std::string text;
    std::string length;
    char letter = 0;
};

/// Takes a conversion off the front of what follows a "%".
Conversion takeConversion(std::string_view& rest) {
    Conversion conversion{"%", "", 0};
    const std::size_t flags = std::min(rest.find_first_not_of("-+ #0123456789."), rest.size());
    conversion.text += rest.substr(0, flags);
    rest.remove_prefix(flags);
    const std::size_t length = std::min(rest.find_first_not_of("hlqztj"), rest.size());
    conversion.length = rest.substr(0, length);
    rest.remove_prefix(length);
    if (rest.empty()) {
        fatal("a format ends in the middle of a conversion");
    }
    conversion.letter = rest.front();
    rest.remove_prefix(1);
    return conversion;
}

template <typename Value>
std::string printed(const Conversion& conversion, const char* length, Value value) {
    const std::string format = conversion.text + length + conversion.letter;
    char buffer[512];
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wformat-nonliteral"
    const int size = std::snprintf(buffer, sizeof buffer, format.c_str(), value);
#pragma clang diagnostic pop
    if (size < 0 || static_cast<std::size_t>(size) >= sizeof buffer) {
        fatal(fmt::format("too long for this fake: {}", format));
    }
    return buffer;
}

template <typename Int, typename Long>
std::string printedInteger(const Conversion& conversion, va_list arguments) {
    if (conversion.length.empty()) {
        return printed(conversion, "", va_arg(arguments, Int));
    }
    if (conversion.length == "hh" || conversion.length == "h") {
        return printed(conversion, conversion.length.c_str(), va_arg(arguments, Int));
    }
    return printed(conversion, "ll", va_arg(arguments, Long));
}

std::string converted(const Conversion& conversion, va_list arguments) {
    switch (conversion.letter) {
        case '@': {
            const id object = va_arg(arguments, id);
            return object == nil ? "(null)" : textOf([object description]);
        }
        case 'd':
        case 'i':
            return printedInteger<int, long long>(conversion, arguments);
        case 'u':
        case 'x':
        case 'X':
            return printedInteger<unsigned, unsigned long long>(conversion, arguments);
        case 'f':
        case 'g':
        case 'e':
            return printed(conversion, "", va_arg(arguments, double));
        case 's':
            return va_arg(arguments, const char*);
        case 'p':
            return printed(conversion, "", va_arg(arguments, void*));
        default:
            fatal(fmt::format("a conversion that this fake does not know: %{}", conversion.letter));
    }
}

}  // namespace

std::string textOf(NSString* string) {
    const NSUInteger size = [string lengthOfBytesUsingEncoding:NSUTF8StringEncoding];
    return size == 0 ? std::string() : std::string(string.UTF8String, size);
}

NSString* stringOf(std::string_view text) {
    NSString* string = [[NSString alloc] initWithBytes:text.data()
                                                length:text.size()
                                              encoding:NSUTF8StringEncoding];
    if (string == nil) {
        complain("a fake made a string of what is not UTF-8");
    }
    return string;
}

std::string formatted(NSString* format, va_list arguments) {
    const std::string text = textOf(format);
    std::string_view rest = text;
    std::string result;
    while (!rest.empty()) {
        const std::size_t percent = std::min(rest.find('%'), rest.size());
        result += rest.substr(0, percent);
        rest.remove_prefix(percent);
        if (rest.starts_with("%%")) {
            result += '%';
            rest.remove_prefix(2);
        } else if (!rest.empty()) {
            rest.remove_prefix(1);
            result += converted(takeConversion(rest), arguments);
        }
    }
    return result;
}

}  // namespace corvane::objc
