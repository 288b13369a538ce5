#pragma once

#include "tests/platform/macos/fakes/objc/Abi.h"

namespace corvane::objc {

/// Sets all weak references to an object to null: at the beginning of its end.
void clearWeakReferences(id object);

}  // namespace corvane::objc
