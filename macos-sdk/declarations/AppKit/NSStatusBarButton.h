#pragma once
#import <AppKit/NSButton.h>

// AppKit's public documentation: a status item's place in the menu bar, in a window of its own.
@interface NSStatusBarButton : NSButton
@end
