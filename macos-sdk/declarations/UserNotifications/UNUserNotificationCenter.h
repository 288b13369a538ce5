// The notification centre. From: Apple's public documentation of UNUserNotificationCenter.
#pragma once

#import <Foundation/Foundation.h>

@class UNNotification, UNNotificationRequest, UNNotificationSettings, UNUserNotificationCenter;

typedef NS_OPTIONS(NSUInteger, UNAuthorizationOptions) {
    UNAuthorizationOptionSound = 1UL << 1,
    UNAuthorizationOptionAlert = 1UL << 2,
};

typedef NS_OPTIONS(NSUInteger, UNNotificationPresentationOptions) {
    UNNotificationPresentationOptionSound = 1UL << 1,
    UNNotificationPresentationOptionBanner = 1UL << 4,
};

@protocol UNUserNotificationCenterDelegate <NSObject>
@optional
- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions options))completionHandler;
@end

// Handlers run on a queue of the centre's own.
@interface UNUserNotificationCenter : NSObject
// Throws in a process without a bundle.
+ (UNUserNotificationCenter*)currentNotificationCenter;
@property(weak) id<UNUserNotificationCenterDelegate> delegate;
- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(void (^)(BOOL granted, NSError* error))completionHandler;
- (void)getNotificationSettingsWithCompletionHandler:
    (void (^)(UNNotificationSettings* settings))completionHandler;
- (void)addNotificationRequest:(UNNotificationRequest*)request
         withCompletionHandler:(void (^)(NSError* error))completionHandler;
@end
