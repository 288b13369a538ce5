// The user's languages. From: Apple's public documentation of NSLocale.
#pragma once

#import <Foundation/NSObject.h>

@class NSArray<ObjectType>;

@interface NSLocale : NSObject
@property(class, readonly, copy) NSArray<NSString*>* preferredLanguages;
@end
