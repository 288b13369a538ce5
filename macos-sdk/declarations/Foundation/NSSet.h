// Sets. From: Apple's public documentation of NSSet.
#pragma once

#import <Foundation/NSEnumerator.h>

@class NSArray<ObjectType>;

@interface NSSet<__covariant ObjectType> : NSObject <NSCopying, NSSecureCoding, NSFastEnumeration>
@property(readonly) NSUInteger count;
@property(readonly, copy) NSArray<ObjectType>* allObjects;
- (BOOL)containsObject:(ObjectType)anObject;
- (BOOL)isEqualToSet:(NSSet<ObjectType>*)otherSet;
+ (instancetype)set;
+ (instancetype)setWithObjects:(const ObjectType[])objects count:(NSUInteger)cnt;
+ (instancetype)setWithObjects:(ObjectType)firstObj, ... NS_REQUIRES_NIL_TERMINATION;
+ (instancetype)setWithArray:(NSArray<ObjectType>*)array;
@end
