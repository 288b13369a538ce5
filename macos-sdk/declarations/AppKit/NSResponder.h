#pragma once
#import <Foundation/Foundation.h>

// AppKit's public documentation: the root of everything that takes part in handling events.
@interface NSResponder : NSObject
@end
