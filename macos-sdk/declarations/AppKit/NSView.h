#pragma once
#import <AppKit/NSResponder.h>

@class NSWindow;

// AppKit's public documentation. `convertRect:toView:` leads to the coordinates of the window when the other
// view is nil.
@interface NSView : NSResponder
@property(readonly) NSRect bounds;
@property(readonly, weak) NSWindow* window;
@property(copy) NSString* toolTip;
- (NSRect)convertRect:(NSRect)rect toView:(NSView*)view;
@end
