#pragma once

#include "tests/platform/macos/fakes/objc/Abi.h"

namespace corvane::objc {

/// Puts the classes of the blocks that the compiler makes below this one.
void giveBlocksTheirClass(Class blockClass);

/// Destroys what a block on the heap has captured: at the beginning of its end.
void destroyCaptured(id block);

/// The types of a block's result and arguments, as @encode says them: "v16@?0@8"; null when the compiler left
/// none.
const char* typesOf(id block);

}  // namespace corvane::objc
