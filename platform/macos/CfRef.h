#pragma once

#include <memory>
#include <type_traits>

#include <CoreFoundation/CoreFoundation.h>

namespace corvane {

struct CfRelease {
    void operator()(CFTypeRef object) const { CFRelease(object); }
};

/// One reference to a Core Foundation object, which ends with it; null for none. For what a function with
/// Create or Copy in its name returned: what others return is borrowed.
template <typename Ref>
using CfRef = std::unique_ptr<std::remove_pointer_t<Ref>, CfRelease>;

}  // namespace corvane
