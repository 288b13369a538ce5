#include "platform/macos/desktop/MacRunningApplications.h"

#include <utility>

#import <AppKit/NSWorkspace.h>

#include "platform/macos/NSStringText.h"
#include "platform/macos/desktop/MainLoopNotice.h"

namespace corvane {

namespace {

/// Only the workspace's own centre has these notices.
std::unique_ptr<MainLoopNotice> workspaceNotice(NSNotificationName name, SerialQueue& mainLoop,
                                                const Observers& observers) {
    return std::make_unique<MainLoopNotice>(NSWorkspace.sharedWorkspace.notificationCenter, name, mainLoop,
                                            [&observers] { observers.notify(); });
}

}  // namespace

MacRunningApplications::MacRunningApplications(SerialQueue& mainLoop)
    : launch_(workspaceNotice(NSWorkspaceDidLaunchApplicationNotification, mainLoop, observers_)),
      quit_(workspaceNotice(NSWorkspaceDidTerminateApplicationNotification, mainLoop, observers_)) {}

MacRunningApplications::~MacRunningApplications() = default;

RunningApplications::Identifiers MacRunningApplications::identifiers() const {
    Identifiers identifiers;
    for (NSRunningApplication* application in NSWorkspace.sharedWorkspace.runningApplications) {
        if (NSString* identifier = application.bundleIdentifier) {
            identifiers.insert(textOf(identifier));
        }
    }
    return identifiers;
}

std::unique_ptr<Observation> MacRunningApplications::observe(std::function<void()> changed) {
    return observers_.add(std::move(changed));
}

}  // namespace corvane
