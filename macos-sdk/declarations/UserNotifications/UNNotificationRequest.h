// Notifications to deliver. From: Apple's public documentation of UNNotificationRequest,
// UNMutableNotificationContent and UNNotificationSound.
#pragma once

#import <Foundation/Foundation.h>

@class UNNotificationTrigger;

@interface UNNotificationSound : NSObject <NSCopying>
@property(class, readonly, copy) UNNotificationSound* defaultSound;
@end

@interface UNNotificationContent : NSObject <NSCopying>
@property(readonly, copy) NSString* title;
@property(readonly, copy) NSString* body;
@property(readonly, copy) UNNotificationSound* sound;
@end

@interface UNMutableNotificationContent : UNNotificationContent
@property(copy) NSString* title;
@property(copy) NSString* body;
@property(copy) UNNotificationSound* sound;
@end

@interface UNNotificationRequest : NSObject
// Delivers at once when `trigger` is nil.
+ (instancetype)requestWithIdentifier:(NSString*)identifier
                              content:(UNNotificationContent*)content
                              trigger:(UNNotificationTrigger*)trigger;
@property(readonly, copy) NSString* identifier;
@property(readonly, copy) UNNotificationContent* content;
@property(readonly, copy) UNNotificationTrigger* trigger;
@end
