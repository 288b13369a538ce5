// Strings. From: Apple's public documentation of NSString. NSConstantString is the class of literals in the
// interface that the compiler has for runtimes other than Apple's.
#pragma once

#import <Foundation/NSObject.h>

typedef NSUInteger NSStringEncoding;
enum : NSStringEncoding { NSUTF8StringEncoding = 4 };

@interface NSString : NSObject <NSCopying, NSSecureCoding>
// In UTF-16 code units.
@property(readonly) NSUInteger length;
// Null-terminated. It lives as long as the string or the innermost autorelease pool.
@property(readonly) const char* UTF8String;
@property(readonly, copy) NSString* lastPathComponent;
@property(readonly, copy) NSString* pathExtension;
@property(readonly, copy) NSString* stringByDeletingPathExtension;
+ (instancetype)string;
// nil for bytes that are not UTF-8.
+ (instancetype)stringWithUTF8String:(const char*)nullTerminatedCString;
+ (instancetype)stringWithFormat:(NSString*)format, ... NS_FORMAT_FUNCTION(1, 2);
- (instancetype)initWithBytes:(const void*)bytes length:(NSUInteger)len encoding:(NSStringEncoding)encoding;
- (NSUInteger)lengthOfBytesUsingEncoding:(NSStringEncoding)enc;
- (BOOL)isEqualToString:(NSString*)aString;
- (BOOL)hasPrefix:(NSString*)str;
- (BOOL)hasSuffix:(NSString*)str;
- (NSString*)stringByAppendingPathComponent:(NSString*)str;
@end

@interface NSSimpleCString : NSString
@end

@interface NSConstantString : NSSimpleCString
@end
