// The user's folders. From: Apple's public documentation of Foundation's path functions.
#pragma once

#import <Foundation/NSString.h>

FOUNDATION_EXPORT NSString* NSTemporaryDirectory(void);
FOUNDATION_EXPORT NSString* NSHomeDirectory(void);
