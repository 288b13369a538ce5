#pragma once
#import <AppKit/NSStatusBarButton.h>

// AppKit's public documentation. Made by a status bar; the button is there as long as the item is.
@interface NSStatusItem : NSObject
@property(readonly, strong) NSStatusBarButton* button;
@end
