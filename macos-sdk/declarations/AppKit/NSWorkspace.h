#pragma once
#import <AppKit/NSRunningApplication.h>

// AppKit's public documentation: posted to the workspace's own notification centre, and to no other.
FOUNDATION_EXPORT NSNotificationName const NSWorkspaceDidLaunchApplicationNotification;
FOUNDATION_EXPORT NSNotificationName const NSWorkspaceDidTerminateApplicationNotification;

// AppKit's public documentation. The list of applications changes while the main run loop runs.
@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace* sharedWorkspace;
@property(readonly, strong) NSNotificationCenter* notificationCenter;
@property(readonly, copy) NSArray<NSRunningApplication*>* runningApplications;
- (BOOL)openURL:(NSURL*)url;
@end
