// What the Objective-C++ of these folders takes for granted about Apple's frameworks, checked wherever it is
// compiled: a real SDK that differs does not compile. All of it is about the SDK's own names.

#include <type_traits>

#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>
#import <ServiceManagement/ServiceManagement.h>
#import <UserNotifications/UserNotifications.h>

namespace {

using std::is_same_v;

// The language's own types, which blocks and structures are made of.
static_assert(is_same_v<BOOL, bool>);
static_assert(is_same_v<NSInteger, long>);
static_assert(is_same_v<NSUInteger, unsigned long>);
static_assert(is_same_v<NSTimeInterval, double>);
static_assert(is_same_v<NSRect, CGRect>);
static_assert(is_same_v<NSPoint, CGPoint>);
static_assert(NSUTF8StringEncoding == 4);

// The menu bar.
static_assert(is_same_v<decltype(NSVariableStatusItemLength), const CGFloat>);
static_assert(NSImageOnly == 1);
static_assert(NSImageLeading == 7);
static_assert(NSControlStateValueOff == 0);
static_assert(NSControlStateValueOn == 1);
static_assert(NSEventTypeLeftMouseUp == 2);
static_assert(NSEventTypeRightMouseUp == 4);
static_assert(NSEventMaskLeftMouseUp == 1ULL << 2);
static_assert(NSEventMaskRightMouseUp == 1ULL << 4);
static_assert(NSEventModifierFlagControl == 1UL << 18);

// The application among others.
static_assert(NSApplicationActivationPolicyRegular == 0);
static_assert(NSApplicationActivationPolicyAccessory == 1);
static_assert(NSKeyValueObservingOptionNew == 1);

// Heat, which is compared and shown as a number.
static_assert(NSProcessInfoThermalStateNominal == 0);
static_assert(NSProcessInfoThermalStateFair == 1);
static_assert(NSProcessInfoThermalStateSerious == 2);
static_assert(NSProcessInfoThermalStateCritical == 3);

// Login items.
static_assert(SMAppServiceStatusNotRegistered == 0);
static_assert(SMAppServiceStatusEnabled == 1);
static_assert(SMAppServiceStatusRequiresApproval == 2);
static_assert(SMAppServiceStatusNotFound == 3);

// Notifications.
static_assert(UNAuthorizationStatusNotDetermined == 0);
static_assert(UNAuthorizationStatusDenied == 1);
static_assert(UNAuthorizationStatusAuthorized == 2);
static_assert(UNAuthorizationStatusProvisional == 3);
static_assert(UNAuthorizationOptionSound == 1UL << 1);
static_assert(UNAuthorizationOptionAlert == 1UL << 2);
static_assert(UNNotificationPresentationOptionSound == 1UL << 1);
static_assert(UNNotificationPresentationOptionBanner == 1UL << 4);

// The way to the helper.
static_assert(NSXPCConnectionPrivileged == 1UL << 12);
static_assert(NSXPCConnectionInterrupted == 4097);
static_assert(NSXPCConnectionInvalid == 4099);

// A second start, and what must not be slowed down.
static_assert(kCoreEventClass == 0x61657674, "'aevt'");
static_assert(kAEReopenApplication == 0x72617070, "'rapp'");
static_assert(NSActivityUserInitiatedAllowingIdleSystemSleep == 0x00EFFFFF);

// Volumes.
static_assert(NSVolumeEnumerationSkipHiddenVolumes == 1UL << 1);

}  // namespace
