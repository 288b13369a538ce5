#pragma once

#include "tests/platform/macos/fakes/objc/Abi.h"

namespace corvane::objc {

/// Makes selectors of one name share one address for it, so that names are compared by address. From any
/// thread.
void internSelector(SEL selector);

}  // namespace corvane::objc
