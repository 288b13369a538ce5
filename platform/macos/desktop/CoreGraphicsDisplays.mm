#include "platform/macos/desktop/CoreGraphicsDisplays.h"

#include <cstdint>
#include <utility>

#import <AppKit/AppKit.h>
#include <CoreGraphics/CoreGraphics.h>

#include "platform/macos/desktop/MainLoopNotice.h"

namespace corvane {

CoreGraphicsDisplays::CoreGraphicsDisplays(SerialQueue& mainLoop)
    : notice_(std::make_unique<MainLoopNotice>(NSNotificationCenter.defaultCenter,
                                               NSApplicationDidChangeScreenParametersNotification, mainLoop,
                                               [this] { observers_.notify(); })) {}

CoreGraphicsDisplays::~CoreGraphicsDisplays() = default;

std::optional<std::vector<Display>> CoreGraphicsDisplays::online() const {
    std::uint32_t count = 0;
    if (CGGetOnlineDisplayList(0, nullptr, &count) != kCGErrorSuccess) {
        return std::nullopt;
    }
    std::vector<CGDirectDisplayID> ids(count);
    // Without room it would count once more.
    if (!ids.empty() && CGGetOnlineDisplayList(count, ids.data(), &count) != kCGErrorSuccess) {
        return std::nullopt;
    }
    // One may have gone in between.
    ids.resize(count);
    std::vector<Display> displays;
    for (const CGDirectDisplayID id : ids) {
        displays.push_back({.isBuiltIn = CGDisplayIsBuiltin(id) != 0});
    }
    return displays;
}

std::unique_ptr<Observation> CoreGraphicsDisplays::observe(std::function<void()> changed) {
    return observers_.add(std::move(changed));
}

}  // namespace corvane
