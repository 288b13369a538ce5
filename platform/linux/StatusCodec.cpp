#include "platform/linux/StatusCodec.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace corvane {

namespace {

using BusDictionaries = std::vector<BusDictionary>;

struct ToVariant {
    sdbus::Variant operator()(std::monostate) const { return {}; }

    sdbus::Variant operator()(const std::vector<StatusRecord>& records) const {
        BusDictionaries dictionaries;
        std::transform(records.begin(), records.end(), std::back_inserter(dictionaries), toBus);
        return dictionaries;
    }

    template <typename T>
    sdbus::Variant operator()(const T& value) const {
        return value;
    }
};

StatusValue toValue(const sdbus::Variant& variant) {
    if (variant.containsValueOfType<bool>()) {
        return variant.get<bool>();
    }
    if (variant.containsValueOfType<std::int32_t>()) {
        return variant.get<std::int32_t>();
    }
    if (variant.containsValueOfType<double>()) {
        return variant.get<double>();
    }
    if (variant.containsValueOfType<std::string>()) {
        return variant.get<std::string>();
    }
    if (variant.containsValueOfType<BusDictionaries>()) {
        const auto dictionaries = variant.get<BusDictionaries>();
        std::vector<StatusRecord> records;
        std::transform(dictionaries.begin(), dictionaries.end(), std::back_inserter(records), fromBus);
        return records;
    }
    return std::monostate{};
}

}  // namespace

BusDictionary toBus(const StatusRecord& record) {
    BusDictionary dictionary;
    for (const auto& [key, value] : record.entries()) {
        if (!std::holds_alternative<std::monostate>(value)) {
            dictionary.emplace(key, std::visit(ToVariant{}, value));
        }
    }
    return dictionary;
}

StatusRecord fromBus(const BusDictionary& dictionary) {
    StatusRecord record;
    for (const auto& [key, value] : dictionary) {
        record.set(key, toValue(value));
    }
    return record;
}

}  // namespace corvane
