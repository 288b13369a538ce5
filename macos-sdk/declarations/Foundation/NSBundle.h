// Bundles of programs. From: Apple's public documentation of NSBundle.
#pragma once

#import <Foundation/NSObject.h>

@interface NSBundle : NSObject
// The folder of the executable when that is in no bundle.
@property(class, readonly, strong) NSBundle* mainBundle;
// nil when there is no bundle at `path`.
+ (instancetype)bundleWithPath:(NSString*)path;
@property(readonly, copy) NSString* bundlePath;
// nil for a bundle without an Info.plist, and one that does not say.
@property(readonly, copy) NSString* bundleIdentifier;
- (NSString*)pathForResource:(NSString*)name ofType:(NSString*)ext;
// Of whatever class a property list has; the user's language counts.
- (id)objectForInfoDictionaryKey:(NSString*)key;
@end
