#include "platform/macos/gui/MacActivationPolicy.h"

#import <AppKit/AppKit.h>

namespace corvane {

MacActivationPolicy::MacActivationPolicy() {
    set(Presence::accessory);
}

void MacActivationPolicy::set(Presence presence) {
    [NSApplication.sharedApplication setActivationPolicy:presence == Presence::regular
                                                             ? NSApplicationActivationPolicyRegular
                                                             : NSApplicationActivationPolicyAccessory];
}

void MacActivationPolicy::activate() {
    [NSApplication.sharedApplication activateIgnoringOtherApps:YES];
}

}  // namespace corvane
