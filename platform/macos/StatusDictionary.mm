#include "platform/macos/StatusDictionary.h"

#include <cstddef>
#include <limits>
#include <string>
#include <utility>

#import <Foundation/Foundation.h>

#include "platform/macos/NSStringText.h"
#include "platform/macos/NumberKind.h"

namespace corvane {

namespace {

struct ToObject {
    id operator()(std::monostate) const { return nil; }
    id operator()(bool value) const { return [NSNumber numberWithBool:value]; }
    id operator()(std::int32_t value) const { return [NSNumber numberWithInt:value]; }
    id operator()(double value) const { return [NSNumber numberWithDouble:value]; }
    id operator()(const std::string& value) const { return stringOf(value); }

    id operator()(const std::vector<StatusRecord>& records) const {
        NSMutableArray<NSDictionary<NSString*, id>*>* dictionaries = [NSMutableArray array];
        for (const StatusRecord& record : records) {
            [dictionaries addObject:dictionaryOf(record)];
        }
        return dictionaries;
    }
};

/// Reads within what a helper sends at most.
class DictionaryReader {
public:
    std::optional<StatusRecord> readRecord(NSDictionary* dictionary) {
        if (!spend(itemsLeft_, 1 + dictionary.count) || !spend(levelsLeft_, 1)) {
            return std::nullopt;
        }
        StatusRecord record;
        id key = nil;
        for (key in dictionary) {
            const std::optional<std::string> name = readText(key);
            std::optional<StatusValue> value = readValue([dictionary objectForKey:key]);
            if (!name || !value) {
                return std::nullopt;
            }
            record.set(*name, std::move(*value));
        }
        ++levelsLeft_;
        return record;
    }

private:
    /// Nothing when the whole cannot be read.
    std::optional<StatusValue> readValue(id object) {
        if ([object isKindOfClass:[NSNumber class]]) {
            return readNumber(object);
        }
        if ([object isKindOfClass:[NSString class]]) {
            std::optional<std::string> text = readText(object);
            return text ? std::optional<StatusValue>(std::move(*text)) : std::nullopt;
        }
        if ([object isKindOfClass:[NSArray class]]) {
            return readRecords(object);
        }
        return StatusValue();
    }

    static StatusValue readNumber(NSNumber* number) {
        using Limits = std::numeric_limits<std::int32_t>;
        switch (kindOf(number)) {
            case NumberKind::boolean:
                return static_cast<bool>(number.boolValue);
            case NumberKind::real:
                return number.doubleValue;
            case NumberKind::integer: {
                const long long value = number.longLongValue;
                return value < Limits::min() || value > Limits::max()
                           ? StatusValue()
                           : StatusValue(static_cast<std::int32_t>(value));
            }
            case NumberKind::unsignedBeyondInteger:
                break;
        }
        return {};
    }

    std::optional<StatusValue> readRecords(NSArray* array) {
        if (!spend(itemsLeft_, array.count)) {
            return std::nullopt;
        }
        std::vector<StatusRecord> records;
        id element = nil;
        for (element in array) {
            if (![element isKindOfClass:[NSDictionary class]]) {
                return StatusValue();
            }
            std::optional<StatusRecord> record = readRecord(element);
            if (!record) {
                return std::nullopt;
            }
            records.push_back(std::move(*record));
        }
        return StatusValue(std::move(records));
    }

    std::optional<std::string> readText(id object) {
        // The length first: nothing is copied before it is known to be fine.
        if (![object isKindOfClass:[NSString class]] ||
            !spend(textLeft_, [object lengthOfBytesUsingEncoding:NSUTF8StringEncoding])) {
            return std::nullopt;
        }
        return textOf(object);
    }

    static bool spend(std::size_t& left, std::size_t amount) {
        if (amount > left) {
            return false;
        }
        left -= amount;
        return true;
    }

    std::size_t itemsLeft_ = 1024;
    std::size_t textLeft_ = 65536;
    std::size_t levelsLeft_ = 4;
};

}  // namespace

NSDictionary<NSString*, id>* dictionaryOf(const StatusRecord& record) {
    NSMutableDictionary<NSString*, id>* dictionary = [NSMutableDictionary dictionary];
    for (const auto& [key, value] : record.entries()) {
        id object = std::visit(ToObject{}, value);
        if (object != nil) {
            dictionary[stringOf(key)] = object;
        }
    }
    return dictionary;
}

std::optional<StatusRecord> recordOf(NSDictionary<NSString*, id>* dictionary) {
    return [dictionary isKindOfClass:[NSDictionary class]] ? DictionaryReader().readRecord(dictionary)
                                                           : std::nullopt;
}

}  // namespace corvane
