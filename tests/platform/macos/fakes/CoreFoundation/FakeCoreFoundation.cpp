#include <cmath>
#include <cstring>
#include <limits>
#include <map>
#include <mutex>

#include <CoreFoundation/CoreFoundation.h>

#include "tests/platform/macos/fakes/CoreFoundation/CfObject.h"
#include "tests/platform/macos/fakes/CoreFoundation/Utf8.h"

using corvane::CfElements;
using corvane::CfEntries;
using corvane::cfValueOf;
using corvane::heldByCf;

// Objects.

const CFAllocatorRef kCFAllocatorDefault = nullptr;

namespace {

constexpr CFTypeID stringType = 1;
constexpr CFTypeID booleanType = 2;
constexpr CFTypeID numberType = 3;
constexpr CFTypeID arrayType = 4;
constexpr CFTypeID dictionaryType = 5;
constexpr CFTypeID anyOtherType = 6;

}  // namespace

CFTypeID CFGetTypeID(CFTypeRef object) {
    // By what it holds; nothing that lives holds nothing.
    constexpr CFTypeID types[] = {0,          stringType, booleanType,   numberType,
                                  numberType, arrayType,  dictionaryType};
    return types[cfValueOf(object).index()];
}

CFTypeID CFStringGetTypeID() {
    return stringType;
}
CFTypeID CFBooleanGetTypeID() {
    return booleanType;
}
CFTypeID CFNumberGetTypeID() {
    return numberType;
}
CFTypeID CFArrayGetTypeID() {
    return arrayType;
}
CFTypeID CFDictionaryGetTypeID() {
    return dictionaryType;
}

// Strings.

CFStringRef CFStringCreateWithBytes(CFAllocatorRef /*allocator*/, const UInt8* bytes, CFIndex count,
                                    CFStringEncoding encoding, Boolean /*hasByteOrderMark*/) {
    std::string text(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(count));
    if (encoding != kCFStringEncodingUTF8 || !corvane::utf16LengthOf(text)) {
        return nullptr;
    }
    return static_cast<CFStringRef>(corvane::makeCfObject(std::move(text)).release());
}

CFIndex CFStringGetLength(CFStringRef string) {
    return static_cast<CFIndex>(corvane::utf16LengthOf(heldByCf<std::string>(string)).value());
}

CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding /*encoding*/) {
    constexpr CFIndex bytesPerUnit = 3;
    return bytesPerUnit * length;
}

Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex bufferSize, CFStringEncoding encoding) {
    const std::string& text = heldByCf<std::string>(string);
    if (encoding != kCFStringEncodingUTF8 || static_cast<CFIndex>(text.size()) >= bufferSize) {
        return 0;
    }
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return 1;
}

CFStringRef __CFStringMakeConstantString(const char* text) {
    static std::mutex mutex;
    static std::map<std::string, CFTypeRef> strings;
    const std::lock_guard lock(mutex);
    const auto [string, isNew] = strings.try_emplace(text, nullptr);
    if (isNew) {
        string->second = corvane::makeCfConstant(std::string(text));
    }
    return static_cast<CFStringRef>(string->second);
}

// Booleans and numbers.

Boolean CFBooleanGetValue(CFBooleanRef boolean) {
    return static_cast<Boolean>(heldByCf<bool>(boolean));
}

Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value) {
    if (type != kCFNumberIntType) {
        return 0;
    }
    // Of a number that does not fit, its nearest is stored all the same.
    const auto* integer = std::get_if<std::int64_t>(&cfValueOf(number));
    const double real = integer != nullptr ? static_cast<double>(*integer) : heldByCf<double>(number);
    const double nearest = std::fmin(std::fmax(std::trunc(real), std::numeric_limits<int>::min()),
                                     std::numeric_limits<int>::max());
    *static_cast<int*>(value) = static_cast<int>(nearest);
    return static_cast<Boolean>(nearest == real);
}

// Collections.

CFIndex CFArrayGetCount(CFArrayRef array) {
    return static_cast<CFIndex>(heldByCf<CfElements>(array).size());
}

const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
    return heldByCf<CfElements>(array).at(static_cast<std::size_t>(index)).get();
}

CFIndex CFDictionaryGetCount(CFDictionaryRef dictionary) {
    return static_cast<CFIndex>(heldByCf<CfEntries>(dictionary).size());
}

const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key) {
    for (const auto& [known, value] : heldByCf<CfEntries>(dictionary)) {
        if (corvane::areEqualCf(known.get(), key)) {
            return value.get();
        }
    }
    return nullptr;
}

void CFDictionaryGetKeysAndValues(CFDictionaryRef dictionary, const void** keys, const void** values) {
    for (const auto& [key, value] : heldByCf<CfEntries>(dictionary)) {
        if (keys != nullptr) {
            *keys++ = key.get();
        }
        if (values != nullptr) {
            *values++ = value.get();
        }
    }
}
