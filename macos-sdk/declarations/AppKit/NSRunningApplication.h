#pragma once
#import <Foundation/Foundation.h>

// AppKit's public documentation.
@interface NSRunningApplication : NSObject
// nil for what has no Info.plist.
@property(readonly, copy) NSString* bundleIdentifier;
@end
