// Bytes. From: Apple's public documentation of NSData.
#pragma once

#import <Foundation/NSObject.h>

@interface NSData : NSObject <NSCopying, NSSecureCoding>
@property(readonly) NSUInteger length;
// Lives as long as the object. May be null when there are none.
@property(readonly) const void* bytes;
- (BOOL)isEqualToData:(NSData*)other;
+ (instancetype)data;
+ (instancetype)dataWithBytes:(const void*)bytes length:(NSUInteger)length;
@end
