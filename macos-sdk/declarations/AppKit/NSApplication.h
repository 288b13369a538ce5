#pragma once
#import <AppKit/NSAppearance.h>
#import <AppKit/NSEvent.h>
#import <AppKit/NSResponder.h>

// AppKit's public documentation; the values are those of its reference pages.
typedef NS_ENUM(NSInteger, NSApplicationActivationPolicy) {
    NSApplicationActivationPolicyRegular = 0,
    NSApplicationActivationPolicyAccessory = 1,
    NSApplicationActivationPolicyProhibited = 2,
};

// AppKit's public documentation.
FOUNDATION_EXPORT NSNotificationName const NSApplicationDidChangeScreenParametersNotification;
FOUNDATION_EXPORT NSNotificationName const NSApplicationDidFinishLaunchingNotification;

// AppKit's public documentation. The shared application is made when it is first asked for, and never goes;
// `effectiveAppearance` can be observed by its key.
@interface NSApplication : NSResponder
@property(class, readonly, strong) NSApplication* sharedApplication;
@property(readonly, strong) NSEvent* currentEvent;
@property(readonly, strong) NSAppearance* effectiveAppearance;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy;
- (void)activateIgnoringOtherApps:(BOOL)flag;
@end
