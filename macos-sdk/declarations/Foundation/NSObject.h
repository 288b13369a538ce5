// Protocols of values. From: Apple's public documentation of Foundation (NSCopying, NSMutableCopying,
// NSCoding, NSSecureCoding). Nothing here is written to archives.
#pragma once

#import <Foundation/NSObjCRuntime.h>

@protocol NSCopying
- (id)copyWithZone:(NSZone*)zone;
@end

@protocol NSMutableCopying
- (id)mutableCopyWithZone:(NSZone*)zone;
@end

@protocol NSCoding
@end

@protocol NSSecureCoding <NSCoding>
@property(class, readonly) BOOL supportsSecureCoding;
@end
