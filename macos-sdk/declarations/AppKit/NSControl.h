#pragma once
#import <AppKit/NSEvent.h>
#import <AppKit/NSView.h>

// AppKit's public documentation. The action takes the control as its one argument; `sendActionOn:` takes the
// events that send it and returns those of before.
@interface NSControl : NSView
@property(weak) id target;
@property SEL action;
- (NSInteger)sendActionOn:(NSEventMask)mask;
@end
