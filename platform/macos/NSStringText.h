#pragma once

#include <string>
#include <string_view>

@class NSString;

namespace corvane {

/// What a string says, in UTF-8; "" for nil. Bytes of value 0 are kept.
std::string textOf(NSString* string);

/// A string of UTF-8; an empty one for bytes that are not. Never nil.
NSString* stringOf(std::string_view text);

}  // namespace corvane
