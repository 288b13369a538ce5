#pragma once

#include <cstdint>
#include <map>
#include <string>

#include <IOKit/pwr_mgt/IOPMLib.h>

#include "tests/platform/macos/fakes/Current.h"

namespace corvane {

/// The power management of a Mac: keeps the assertions that are held. One at a time, main thread.
class FakePowerManagement {
public:
    struct Assertion {
        std::string type;
        std::string name;

        bool operator==(const Assertion&) const = default;
    };

    /// From now on every assertion is refused with this code; `kIOReturnSuccess` ends that.
    void refuse(IOReturn code) { code_ = code; }

    /// By id, in the order they were taken.
    [[nodiscard]] const std::map<IOPMAssertionID, Assertion>& held() const { return held_; }

    // For IOKit's functions.
    IOReturn create(const Assertion& assertion, IOPMAssertionID& id);
    IOReturn release(IOPMAssertionID id);

private:
    IOReturn code_ = kIOReturnSuccess;
    IOPMAssertionID last_ = 0x8000;
    std::map<IOPMAssertionID, Assertion> held_;
    Current<FakePowerManagement> current_{*this};
};

}  // namespace corvane
