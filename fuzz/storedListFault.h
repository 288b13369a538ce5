#pragma once

#include <QList>
#include <span>
#include <string>
#include <string_view>

#include "app/shell/StoredList.h"

namespace corvane {

/// What is wrong with how a kind of stored list is read: what was read, written and read again must be the
/// same.
template <typename List>
std::string storedListFault(std::string_view data) {
    const auto bytes = std::as_bytes(std::span(data));
    const auto items = List::decode(StoredList::Data(bytes.begin(), bytes.end()));
    const auto written = List::encode(items);
    if (!written) {
        // Escapes may make a list longer than it was; such a list is not stored.
        return data.size() < StoredList::largestData / 8 ? "a short list is not written" : "";
    }
    return List::decode(*written) == items ? "" : "the list is another one when it is read again";
}

}  // namespace corvane
