#pragma once

#include <cstdarg>
#include <string>
#include <string_view>

@class NSString;

namespace corvane::objc {

/// What a string says, in UTF-8; "" for nil.
std::string textOf(NSString* string);

/// A string of UTF-8. Bytes that are not fail the test.
NSString* stringOf(std::string_view text);

/// What stringWithFormat: makes of a format. Conversions that this fake does not know end the program.
std::string formatted(NSString* format, va_list arguments);

}  // namespace corvane::objc
