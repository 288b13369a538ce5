#include "platform/macos/desktop/IoKitPowerAssertions.h"

#include <IOKit/pwr_mgt/IOPMLib.h>

#include "platform/macos/desktop/CfText.h"

namespace corvane {

std::optional<PowerAssertions::Id> IoKitPowerAssertions::create(std::string_view type,
                                                                std::string_view name) {
    const CfRef<CFStringRef> typeString = cfString(type);
    const CfRef<CFStringRef> nameString = cfString(name);
    if (!typeString || !nameString) {
        return std::nullopt;
    }
    IOPMAssertionID id = 0;
    const IOReturn code =
        IOPMAssertionCreateWithName(typeString.get(), kIOPMAssertionLevelOn, nameString.get(), &id);
    return code == kIOReturnSuccess ? std::optional<Id>(id) : std::nullopt;
}

void IoKitPowerAssertions::release(Id id) {
    IOPMAssertionRelease(id);
}

}  // namespace corvane
