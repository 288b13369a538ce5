#pragma once

#include "tests/platform/macos/fakes/objc/Abi.h"

namespace corvane::objc {

/// Whether the object takes part in reference counting: not literals, classes, protocols, blocks on the
/// stack.
bool isCounted(id object);

/// Retains an object unless its count is 0 already, which is answered by null.
id retainUnlessGone(id object);

}  // namespace corvane::objc
