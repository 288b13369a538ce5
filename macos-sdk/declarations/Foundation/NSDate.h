// Points in time. From: Apple's public documentation of NSDate.
#pragma once

#import <Foundation/NSObject.h>

@interface NSDate : NSObject <NSCopying, NSSecureCoding>
@property(readonly) NSTimeInterval timeIntervalSince1970;
- (BOOL)isEqualToDate:(NSDate*)otherDate;
+ (instancetype)dateWithTimeIntervalSince1970:(NSTimeInterval)secs;
@end
