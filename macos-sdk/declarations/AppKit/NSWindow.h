#pragma once
#import <AppKit/NSResponder.h>

// AppKit's public documentation. Screen coordinates count upwards from the lower left corner of the first
// screen.
@interface NSWindow : NSResponder
- (NSRect)convertRectToScreen:(NSRect)rect;
@end
