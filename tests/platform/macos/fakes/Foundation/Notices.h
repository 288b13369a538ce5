#pragma once

#import <Foundation/Foundation.h>

@interface NSNotificationCenter ()
/// Tells whoever observes the name, on this thread.
- (void)postNotificationName:(NSNotificationName)name object:(id)object;
@end
