#pragma once
#import <Foundation/Foundation.h>

// AppKit's public documentation: constants of the header, no symbols.
typedef NSInteger NSControlStateValue;
static const NSControlStateValue NSControlStateValueOff = 0;
static const NSControlStateValue NSControlStateValueOn = 1;

// AppKit's public documentation. The target is not held.
@interface NSMenuItem : NSObject
+ (NSMenuItem*)separatorItem;
- (instancetype)initWithTitle:(NSString*)title action:(SEL)action keyEquivalent:(NSString*)keyEquivalent;
@property(copy) NSString* title;
@property(getter=isEnabled) BOOL enabled;
@property NSControlStateValue state;
@property NSInteger tag;
@property(weak) id target;
@end
