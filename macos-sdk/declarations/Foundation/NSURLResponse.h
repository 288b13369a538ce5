// Answers of servers. From: Apple's public documentation of NSURLResponse and NSHTTPURLResponse.
#pragma once

#import <Foundation/NSURL.h>

@interface NSURLResponse : NSObject <NSCopying>
// -1 when the server does not say.
@property(readonly) long long expectedContentLength;
@end

@interface NSHTTPURLResponse : NSURLResponse
@property(readonly) NSInteger statusCode;
@end
