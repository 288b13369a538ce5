#pragma once

#import <Foundation/Foundation.h>

/// Runs a block whenever the application's appearance may have changed. Main thread.
@interface CorvaneAppearanceObserver : NSObject

/// Begins at once.
- (instancetype)initWithChanged:(void (^)(void))changed;

/// To be called before it goes; nothing runs any more.
- (void)stop;

@end
