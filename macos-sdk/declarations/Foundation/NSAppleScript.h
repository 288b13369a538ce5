// AppleScript. From: Apple's public documentation of NSAppleScript; the error's keys are those of
// NSAppleScript.h.
#pragma once

#import <Foundation/NSObject.h>

@class NSAppleEventDescriptor, NSDictionary<KeyType, ObjectType>;

FOUNDATION_EXPORT NSString* const NSAppleScriptErrorMessage;
FOUNDATION_EXPORT NSString* const NSAppleScriptErrorNumber;

// Main thread only.
@interface NSAppleScript : NSObject
// nil for what is no source.
- (instancetype)initWithSource:(NSString*)source;
// nil with an error. Blocks until the script has ended.
- (NSAppleEventDescriptor*)executeAndReturnError:(NSDictionary<NSString*, id>**)errorInfo;
@end
