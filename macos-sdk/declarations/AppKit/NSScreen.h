#pragma once
#import <Foundation/Foundation.h>

// AppKit's public documentation. The first screen is the one with the menu bar, whose lower left corner is
// the origin of all screens' coordinates.
@interface NSScreen : NSObject
@property(class, readonly, copy) NSArray<NSScreen*>* screens;
@property(readonly) NSRect frame;
@end
