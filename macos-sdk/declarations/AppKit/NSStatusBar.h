#pragma once
#import <AppKit/NSStatusItem.h>

// AppKit's public documentation: a constant of the header, no symbol.
static const CGFloat NSVariableStatusItemLength = -1.0;

// AppKit's public documentation. The bar does not own its items: an item is there until it is removed or
// released.
@interface NSStatusBar : NSObject
@property(class, readonly, strong) NSStatusBar* systemStatusBar;
- (NSStatusItem*)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem*)item;
@end
