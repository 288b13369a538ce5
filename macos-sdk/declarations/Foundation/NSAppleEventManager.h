// Events between applications. From: Apple's public documentation of NSAppleEventManager; the codes are those
// of the Apple Event Manager's reference (AppleEvents.h).
#pragma once

#import <Foundation/NSObject.h>
#include <MacTypes.h>

@class NSAppleEventDescriptor;

typedef FourCharCode AEEventClass;
typedef FourCharCode AEEventID;

enum : FourCharCode {
    kCoreEventClass = 'aevt',
    // The user has started an application that runs already.
    kAEReopenApplication = 'rapp',
};

// Main thread only.
@interface NSAppleEventManager : NSObject
+ (NSAppleEventManager*)sharedAppleEventManager;
// Replaces the handler there was. The selector takes the event and the reply; the handler is not kept.
- (void)setEventHandler:(id)handler
            andSelector:(SEL)handleEventSelector
          forEventClass:(AEEventClass)eventClass
             andEventID:(AEEventID)eventID;
- (void)removeEventHandlerForEventClass:(AEEventClass)eventClass andEventID:(AEEventID)eventID;
@end
