#pragma once

#include <string>

#include "tests/platform/macos/fakes/objc/Abi.h"

namespace corvane::objc {

/// What a lookup answers; the compiler reads `code` at this place.
struct Slot {
    Class owner = nullptr;
    Class cachedFor = nullptr;
    const char* types = nullptr;
    int version = 0;
    IMP code = nullptr;
};

/// The method of a class, or of those above it; null when there is none. It lives for ever. From any thread.
Slot* findMethod(Class aClass, SEL selector);

/// The method of the class itself; null when there is none.
Slot* ownMethod(Class aClass, SEL selector);

/// The class of an object, also of a literal, a block, a class and an address that is a short string.
Class classOf(id object);

/// "+[NSObject alloc]" or "-[NSObject init]".
std::string methodName(Class aClass, SEL selector);

/// Whether the address is itself a short string of ASCII.
inline bool isTinyString(id object) {
    return (reinterpret_cast<std::uintptr_t>(object) & 7U) == 4;
}

}  // namespace corvane::objc
