// What the project uses of UserNotifications.
#pragma once

#import <UserNotifications/UNNotificationRequest.h>
#import <UserNotifications/UNNotificationSettings.h>
#import <UserNotifications/UNUserNotificationCenter.h>
