#include "tests/platform/macos/fakes/CoreGraphics/FakeDisplays.h"

#include <algorithm>

#import <AppKit/AppKit.h>

#include "tests/platform/macos/fakes/Foundation/Notices.h"
#include "tests/platform/macos/fakes/MainThread.h"

NSNotificationName const NSApplicationDidChangeScreenParametersNotification =
    @"NSApplicationDidChangeScreenParametersNotification";

namespace corvane {

void FakeDisplays::set(std::vector<FakeDisplay> displays) {
    displays_ = std::move(displays);
    @autoreleasepool {
        [NSNotificationCenter.defaultCenter
            postNotificationName:NSApplicationDidChangeScreenParametersNotification
                          object:nil];
    }
}

CGError FakeDisplays::list(std::uint32_t maximum, CGDirectDisplayID* ids, std::uint32_t& count) {
    if (failsFrom_ && maximum >= *failsFrom_) {
        return kCGErrorFailure;
    }
    if (ids == nullptr) {
        count = static_cast<std::uint32_t>(displays_.size());
        displays_ = std::exchange(afterCounting_, std::nullopt).value_or(displays_);
        return kCGErrorSuccess;
    }
    count = std::min(maximum, static_cast<std::uint32_t>(displays_.size()));
    std::ranges::transform(displays_.begin(), displays_.begin() + count, ids, &FakeDisplay::id);
    return kCGErrorSuccess;
}

bool FakeDisplays::isBuiltIn(CGDirectDisplayID id) const {
    const auto found = std::ranges::find(displays_, id, &FakeDisplay::id);
    return found != displays_.end() && found->isBuiltIn;
}

}  // namespace corvane

using CurrentDisplays = corvane::Current<corvane::FakeDisplays>;

CGError CGGetOnlineDisplayList(uint32_t maximum, CGDirectDisplayID* displays, uint32_t* count) {
    corvane::expectMainThread("CGGetOnlineDisplayList");
    return CurrentDisplays::get() == nullptr ? kCGErrorFailure
                                             : CurrentDisplays::get()->list(maximum, displays, *count);
}

boolean_t CGDisplayIsBuiltin(CGDirectDisplayID display) {
    return CurrentDisplays::get() != nullptr && CurrentDisplays::get()->isBuiltIn(display) ? 1 : 0;
}
