#include "tests/platform/macos/fakes/IOKit/FakePowerManagement.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "tests/platform/macos/fakes/CoreFoundation/CfObject.h"
#include "tests/platform/macos/fakes/CoreFoundation/Utf8.h"
#include "tests/platform/macos/fakes/MainThread.h"

namespace corvane {

namespace {

constexpr std::size_t longestAssertionName = 128;
constexpr std::array<std::string_view, 3> assertionTypes = {
    "PreventUserIdleSystemSleep", "PreventUserIdleDisplaySleep", "NetworkClientActive"};

}  // namespace

IOReturn FakePowerManagement::create(const Assertion& assertion, IOPMAssertionID& id) {
    if (code_ != kIOReturnSuccess) {
        return code_;
    }
    if (std::ranges::find(assertionTypes, assertion.type) == assertionTypes.end() ||
        utf16LengthOf(assertion.name) > longestAssertionName) {
        return kIOReturnBadArgument;
    }
    id = ++last_;
    held_.emplace(id, assertion);
    return kIOReturnSuccess;
}

IOReturn FakePowerManagement::release(IOPMAssertionID id) {
    return held_.erase(id) == 1 ? kIOReturnSuccess : kIOReturnNotFound;
}

}  // namespace corvane

using FakePower = corvane::Current<corvane::FakePowerManagement>;

IOReturn IOPMAssertionCreateWithName(CFStringRef type, IOPMAssertionLevel level, CFStringRef name,
                                     IOPMAssertionID* id) {
    corvane::expectMainThread("IOPMAssertionCreateWithName");
    if (FakePower::get() == nullptr || level != kIOPMAssertionLevelOn) {
        return kIOReturnBadArgument;
    }
    return FakePower::get()->create(
        {.type = corvane::heldByCf<std::string>(type), .name = corvane::heldByCf<std::string>(name)}, *id);
}

IOReturn IOPMAssertionRelease(IOPMAssertionID id) {
    corvane::expectMainThread("IOPMAssertionRelease");
    return FakePower::get() == nullptr ? kIOReturnNotFound : FakePower::get()->release(id);
}
