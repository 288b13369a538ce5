#include "platform/macos/desktop/MacUserDefaults.h"

#include <cmath>
#include <utility>

#import <Foundation/Foundation.h>
#include <fmt/format.h>

#include "platform/macos/NSStringText.h"
#include "platform/macos/NumberKind.h"

namespace corvane {

namespace {

bool isUtf8(std::string_view text) {
    return textOf(stringOf(text)) == text;
}

bool isStorable(const DefaultsValue& value) {
    const auto* real = std::get_if<double>(&value);
    const auto* text = std::get_if<std::string>(&value);
    return (real == nullptr || std::isfinite(*real)) && (text == nullptr || isUtf8(*text));
}

/// As property lists have it.
struct ToObject {
    id operator()(bool value) const { return [NSNumber numberWithBool:value]; }
    id operator()(std::int64_t value) const { return [NSNumber numberWithLongLong:value]; }
    id operator()(double value) const { return [NSNumber numberWithDouble:value]; }
    id operator()(const std::string& value) const { return stringOf(value); }
    id operator()(const std::vector<std::byte>& value) const {
        return [NSData dataWithBytes:value.data() length:value.size()];
    }
};

std::optional<DefaultsValue> fromNumber(NSNumber* number) {
    switch (kindOf(number)) {
        case NumberKind::boolean:
            return DefaultsValue(static_cast<bool>(number.boolValue));
        case NumberKind::integer:
            return DefaultsValue(static_cast<std::int64_t>(number.longLongValue));
        case NumberKind::real:
            return DefaultsValue(number.doubleValue);
        case NumberKind::unsignedBeyondInteger:
            break;
    }
    return std::nullopt;
}

std::optional<DefaultsValue> fromObject(id object) {
    if ([object isKindOfClass:[NSNumber class]]) {
        return fromNumber(object);
    }
    if ([object isKindOfClass:[NSString class]]) {
        return DefaultsValue(textOf(object));
    }
    if ([object isKindOfClass:[NSData class]]) {
        NSData* data = object;
        const auto* bytes = static_cast<const std::byte*>(data.bytes);
        return DefaultsValue(std::vector<std::byte>(bytes, bytes + data.length));
    }
    return std::nullopt;
}

NSString* domain() {
    NSString* identifier = NSBundle.mainBundle.bundleIdentifier;
    return identifier == nil ? NSProcessInfo.processInfo.processName : identifier;
}

}  // namespace

std::optional<DefaultsValue> MacUserDefaults::value(std::string_view key) const {
    if (unkept_) {
        const auto held = unkept_->find(key);
        return held == unkept_->end() ? std::nullopt : std::optional(held->second);
    }
    return fromObject([NSUserDefaults.standardUserDefaults objectForKey:stringOf(key)]);
}

void MacUserDefaults::set(std::string_view key, DefaultsValue value) {
    if (!isStorable(value) || !isUtf8(key)) {
        log_.write(fmt::format(
            "Corvane: the setting \"{}\" stays as it was: the new value is not finite, or not UTF-8", key));
    } else if (unkept_) {
        unkept_->insert_or_assign(std::string(key), std::move(value));
    } else {
        [NSUserDefaults.standardUserDefaults setObject:std::visit(ToObject(), value) forKey:stringOf(key)];
        synchronize();
    }
}

void MacUserDefaults::remove(std::string_view key) {
    if (unkept_) {
        unkept_->erase(std::string(key));
    } else {
        [NSUserDefaults.standardUserDefaults removeObjectForKey:stringOf(key)];
        synchronize();
    }
}

void MacUserDefaults::removeAll() {
    unkept_.emplace();
    [NSUserDefaults.standardUserDefaults removePersistentDomainForName:domain()];
    synchronize();
}

void MacUserDefaults::synchronize() {
    const bool isStored = [NSUserDefaults.standardUserDefaults synchronize];
    if (!isStored && !isFailing_) {
        log_.write("Corvane: settings cannot be stored; until they can, they hold until Corvane ends");
    }
    isFailing_ = !isStored;
}

}  // namespace corvane
