// Addresses and paths. From: Apple's public documentation of NSURL.
#pragma once

#import <Foundation/NSObject.h>

@class NSArray<ObjectType>, NSDictionary<KeyType, ObjectType>, NSError;

typedef NSString* NSURLResourceKey;

@interface NSURL : NSObject <NSCopying, NSSecureCoding>
// nil for what is not a URL.
+ (instancetype)URLWithString:(NSString*)URLString;
+ (NSURL*)fileURLWithPath:(NSString*)path;
@property(readonly, copy) NSString* absoluteString;
@property(readonly, copy) NSString* scheme;
@property(readonly, copy) NSString* host;
// Without percent escapes.
@property(readonly, copy) NSString* path;
@property(readonly, copy) NSString* lastPathComponent;
@property(readonly, copy) NSString* pathExtension;
@property(readonly, getter=isFileURL) BOOL fileURL;
- (NSURL*)URLByAppendingPathComponent:(NSString*)pathComponent;
- (BOOL)getResourceValue:(out id*)value forKey:(NSURLResourceKey)key error:(out NSError**)error;
- (NSDictionary<NSURLResourceKey, id>*)resourceValuesForKeys:(NSArray<NSURLResourceKey>*)keys
                                                       error:(NSError**)error;
@end
