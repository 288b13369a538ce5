#include "platform/StatusRecord.h"

#include <algorithm>

namespace corvane {

void StatusRecord::set(std::string_view key, StatusValue value) {
    entries_.emplace_back(key, std::move(value));
}

const StatusValue* StatusRecord::find(std::string_view key) const {
    const auto match = std::find_if(entries_.begin(), entries_.end(),
                                    [key](const Entry& entry) { return entry.first == key; });
    return match == entries_.end() ? nullptr : &match->second;
}

}  // namespace corvane
