// The process and its machine. From: Apple's public documentation of NSProcessInfo.
#pragma once

#import <Foundation/NSNotification.h>

typedef NS_ENUM(NSInteger, NSProcessInfoThermalState) {
    NSProcessInfoThermalStateNominal = 0,
    NSProcessInfoThermalStateFair = 1,
    NSProcessInfoThermalStateSerious = 2,
    NSProcessInfoThermalStateCritical = 3,
};

// Posted to the default centre, on any thread, to those who have asked for the state before.
FOUNDATION_EXPORT NSNotificationName const NSProcessInfoThermalStateDidChangeNotification;

// From NSProcessInfo.h as documented: what the user has asked for, but for the bit that keeps the system
// awake.
typedef NS_OPTIONS(uint64_t, NSActivityOptions) {
    NSActivityUserInitiatedAllowingIdleSystemSleep = 0x00FFFFFFULL & ~(1ULL << 20),
};

@interface NSProcessInfo : NSObject
@property(class, readonly, strong) NSProcessInfo* processInfo;
@property(readonly, copy) NSString* processName;
@property(readonly) NSProcessInfoThermalState thermalState;
// The activity goes on until its object is handed back, or is no more.
- (id<NSObject>)beginActivityWithOptions:(NSActivityOptions)options reason:(NSString*)reason;
- (void)endActivity:(id<NSObject>)activity;
@end
