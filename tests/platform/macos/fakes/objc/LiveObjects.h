#pragma once

#include <string>
#include <vector>

#include "objc/objc.h"

/// The objects that there are, heap blocks among them. From any thread.

namespace corvane::objc {

/// The classes of all objects but those that live for ever, one entry for each object, sorted.
std::vector<std::string> liveObjects();

/// Makes an object live for ever: shared instances and what they keep. Retains and releases do nothing from
/// now on.
void makeImmortal(id object);

/// Frees what was kept of objects that are no more, in order to tell who still sends messages to them.
void emptyGraves();

/// From now on each test has an autorelease pool around it, and fails when it leaves an object behind.
void watchTests();

}  // namespace corvane::objc
