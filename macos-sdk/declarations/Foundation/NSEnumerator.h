// What `for (x in collection)` compiles to. From: Apple's public documentation of NSFastEnumeration; the
// layout is part of the compiler's interface.
#pragma once

#import <Foundation/NSObject.h>

typedef struct {
    unsigned long state;
    id __unsafe_unretained* itemsPtr;
    unsigned long* mutationsPtr;
    unsigned long extra[5];
} NSFastEnumerationState;

@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained[])buffer
                                    count:(NSUInteger)len;
@end
