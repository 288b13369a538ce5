#pragma once

#include <string>

namespace corvane {

/// One line, without an end, about a key: its name, size, type, attributes, the bytes of its value in
/// hexadecimal, and the value as `decodeValue` tells it. A key that cannot be looked up or read says so with
/// the code. Characters that are not printable ASCII appear as ".".
std::string describeKey(const char* key);

}  // namespace corvane
