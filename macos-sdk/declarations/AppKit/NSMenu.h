#pragma once
#import <AppKit/NSMenuItem.h>

@class NSView;

// AppKit's public documentation. A menu that enables its items by itself asks their targets. Popping up
// returns when the menu has closed, and tells whether an item was chosen, whose action was sent then; the
// place is one of the screen when the view is nil, and that of the menu's upper left corner when the item is
// nil.
@interface NSMenu : NSObject
@property BOOL autoenablesItems;
- (void)addItem:(NSMenuItem*)newItem;
- (BOOL)popUpMenuPositioningItem:(NSMenuItem*)item atLocation:(NSPoint)location inView:(NSView*)view;
@end
