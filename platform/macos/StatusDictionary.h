#pragma once

#include <optional>

#include "platform/StatusRecord.h"

@class NSDictionary<KeyType, ObjectType>;
@class NSString;

namespace corvane {

/// A status record as it travels: Booleans, 32-bit integers and reals as NSNumber, texts as NSString, arrays
/// of records as NSArray of NSDictionary. Values of no known type are left out.
NSDictionary<NSString*, id>* dictionaryOf(const StatusRecord& record);

/// The record that a dictionary from the other end holds; its order is the dictionary's. Values of any other
/// type become `std::monostate`. Nothing when it is no record, and when it is larger than any that a helper
/// sends: more than 1024 entries and records or 64 KiB of text in all, or more than 4 records within each
/// other.
std::optional<StatusRecord> recordOf(NSDictionary<NSString*, id>* dictionary);

}  // namespace corvane
