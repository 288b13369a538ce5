#pragma once

#include <map>
#include <string>

#include <sdbus-c++/Message.h>
#include <sdbus-c++/Types.h>

#include "platform/StatusRecord.h"

namespace corvane {

/// A status record as it travels: `a{sv}` with integers `i`, reals `d`, Booleans `b`, texts `s` and arrays of
/// records `aa{sv}`.
using BusDictionary = std::map<std::string, sdbus::Variant>;

BusDictionary toBus(const StatusRecord& record);

/// Reads the record that `message` has next. Values of any other type become `std::monostate`; of several
/// values under one key the first counts. Throws sdbus::Error when what comes is no record, and when it is
/// larger than any that a helper sends: more than 1024 entries and records or 64 KiB of text in all, or more
/// than 4 records within each other.
StatusRecord fromBus(sdbus::Message& message);

}  // namespace corvane
