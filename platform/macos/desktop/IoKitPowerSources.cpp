#include "platform/macos/desktop/IoKitPowerSources.h"

#include <algorithm>
#include <cstddef>

#include <IOKit/ps/IOPSKeys.h>
#include <IOKit/ps/IOPowerSources.h>

#include "platform/macos/desktop/CfText.h"

namespace corvane {

namespace {

std::optional<int> integerOf(CFTypeRef object) {
    int value = 0;
    if (object == nullptr || CFGetTypeID(object) != CFNumberGetTypeID() ||
        CFNumberGetValue(static_cast<CFNumberRef>(object), kCFNumberIntType, &value) == 0) {
        return std::nullopt;
    }
    return value;
}

std::optional<bool> booleanOf(CFTypeRef object) {
    if (object == nullptr || CFGetTypeID(object) != CFBooleanGetTypeID()) {
        return std::nullopt;
    }
    return CFBooleanGetValue(static_cast<CFBooleanRef>(object)) != 0;
}

bool hasStringKeysOnly(CFDictionaryRef dictionary) {
    std::vector<const void*> keys(static_cast<std::size_t>(CFDictionaryGetCount(dictionary)));
    CFDictionaryGetKeysAndValues(dictionary, keys.data(), nullptr);
    return std::ranges::all_of(keys, [](const void* key) { return CFGetTypeID(key) == CFStringGetTypeID(); });
}

std::optional<PowerSourceDescription> descriptionOf(CFTypeRef object) {
    if (object == nullptr || CFGetTypeID(object) != CFDictionaryGetTypeID()) {
        return std::nullopt;
    }
    const auto dictionary = static_cast<CFDictionaryRef>(object);
    if (!hasStringKeysOnly(dictionary)) {
        return std::nullopt;
    }
    const auto entry = [dictionary](CFStringRef key) { return CFDictionaryGetValue(dictionary, key); };
    return PowerSourceDescription{.currentCapacity = integerOf(entry(CFSTR(kIOPSCurrentCapacityKey))),
                                  .maxCapacity = integerOf(entry(CFSTR(kIOPSMaxCapacityKey))),
                                  .state = textOf(entry(CFSTR(kIOPSPowerSourceStateKey))),
                                  .isCharging = booleanOf(entry(CFSTR(kIOPSIsChargingKey)))};
}

}  // namespace

std::vector<std::optional<PowerSourceDescription>> IoKitPowerSources::descriptions() const {
    const CfRef<CFTypeRef> information(IOPSCopyPowerSourcesInfo());
    if (!information) {
        return {};
    }
    const CfRef<CFArrayRef> sources(IOPSCopyPowerSourcesList(information.get()));
    if (!sources || CFGetTypeID(sources.get()) != CFArrayGetTypeID()) {
        return {};
    }
    std::vector<std::optional<PowerSourceDescription>> descriptions;
    for (CFIndex i = 0; i < CFArrayGetCount(sources.get()); ++i) {
        descriptions.push_back(descriptionOf(
            IOPSGetPowerSourceDescription(information.get(), CFArrayGetValueAtIndex(sources.get(), i))));
    }
    return descriptions;
}

}  // namespace corvane
