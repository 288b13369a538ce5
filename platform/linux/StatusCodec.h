#pragma once

#include <map>
#include <string>

#include <sdbus-c++/Types.h>

#include "platform/StatusRecord.h"

namespace corvane {

/// A status record as it travels: `a{sv}` with integers `i`, reals `d`, Booleans `b`, texts `s` and arrays of
/// records `aa{sv}`.
using BusDictionary = std::map<std::string, sdbus::Variant>;

BusDictionary toBus(const StatusRecord& record);

/// Values of any other type become `std::monostate`.
StatusRecord fromBus(const BusDictionary& dictionary);

}  // namespace corvane
