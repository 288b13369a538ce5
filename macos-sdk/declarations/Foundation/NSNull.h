// The object that stands for none in collections. From: Apple's public documentation of NSNull.
#pragma once

#import <Foundation/NSObject.h>

@interface NSNull : NSObject <NSCopying, NSSecureCoding>
+ (NSNull*)null;
@end
