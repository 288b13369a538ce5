#pragma once

#import <Foundation/Foundation.h>

/// What AppKit's controls and menu items tell of the user's doings: it hands their sender to a block. They do
/// not hold their target, so whoever made it keeps it. Main thread.
@interface CorvaneActionTarget : NSObject

- (instancetype)initWithAction:(void (^)(id sender))action;

/// The selector of the action.
- (void)perform:(id)sender;

@end
