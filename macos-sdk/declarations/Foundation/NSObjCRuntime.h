// Words that all of Foundation's headers use. From: Apple's public documentation of Foundation, and
// NSObjCRuntime.h of the open-source swift-corelibs-foundation.
#pragma once

#import <objc/NSObject.h>

#define FOUNDATION_EXPORT extern "C"

// A number type and its named values in one.
#define NS_ENUM(type, name) \
    enum name : type name;  \
    enum name : type
// Values that are bits. In C++ they combine into the number type, as they do with Apple's own header.
#define NS_OPTIONS(type, name) \
    type name;                 \
    enum : type

#define NS_ASSUME_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define NS_ASSUME_NONNULL_END _Pragma("clang assume_nonnull end")
#define NS_RETURNS_RETAINED __attribute__((ns_returns_retained))
#define NS_NOESCAPE __attribute__((noescape))
#define NS_DESIGNATED_INITIALIZER __attribute__((objc_designated_initializer))
#define NS_UNAVAILABLE __attribute__((unavailable))
#define NS_REQUIRES_NIL_TERMINATION __attribute__((sentinel(0, 1)))
#define NS_FORMAT_FUNCTION(text, first) __attribute__((format(__NSString__, text, first)))

@class NSString;

// Seconds.
typedef double NSTimeInterval;

enum : NSInteger { NSNotFound = __LONG_MAX__ };

FOUNDATION_EXPORT void NSLog(NSString* format, ...) NS_FORMAT_FUNCTION(1, 2);
FOUNDATION_EXPORT NSString* NSStringFromSelector(SEL aSelector);
FOUNDATION_EXPORT NSString* NSStringFromClass(Class aClass);
