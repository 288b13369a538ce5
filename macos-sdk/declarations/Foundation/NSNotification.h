// Notices within a process. From: Apple's public documentation of NSNotification and NSNotificationCenter.
#pragma once

#import <Foundation/NSObject.h>

@class NSNotification, NSOperationQueue;

typedef NSString* NSNotificationName;

@interface NSNotification : NSObject
@property(readonly, copy) NSNotificationName name;
@property(readonly, strong) id object;
@end

@interface NSNotificationCenter : NSObject
@property(class, readonly, strong) NSNotificationCenter* defaultCenter;
// The block runs on the thread that posts when `queue` is nil; it lives until the token, which the centre
// keeps as well, is removed.
- (id<NSObject>)addObserverForName:(NSNotificationName)name
                            object:(id)obj
                             queue:(NSOperationQueue*)queue
                        usingBlock:(void (^)(NSNotification* note))block;
- (void)removeObserver:(id)observer;
@end
