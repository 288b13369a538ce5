#pragma once

#include <functional>
#include <utility>

#include "tests/platform/macos/fakes/CoreFoundation/CfObject.h"
#include "tests/platform/macos/fakes/Current.h"

namespace corvane {

/// What feeds a Mac. One at a time, main thread.
class FakePowerSources {
public:
    /// Makes each source's description, null for one that has none. Made anew for each piece of information,
    /// with which they end.
    void set(std::function<CfElements()> descriptions) { descriptions_ = std::move(descriptions); }

    /// The system has nothing to say of power sources.
    void loseInformation() { hasInformation_ = false; }
    /// Makes what the system hands out as the list of sources; null for no list.
    void replaceList(std::function<CfReference()> list) { list_ = std::move(list); }

    // For IOKit's functions.
    [[nodiscard]] CfReference information() const;
    [[nodiscard]] CfReference list(CFTypeRef information) const;

private:
    bool hasInformation_ = true;
    std::function<CfElements()> descriptions_ = [] { return CfElements(); };
    /// Null for the list of the sources there are.
    std::function<CfReference()> list_;
    Current<FakePowerSources> current_{*this};
};

}  // namespace corvane
