// Requests for documents. From: Apple's public documentation of NSURLRequest and NSMutableURLRequest.
#pragma once

#import <Foundation/NSURL.h>

typedef NS_ENUM(NSUInteger, NSURLRequestCachePolicy) {
    NSURLRequestReloadIgnoringLocalCacheData = 1,
};

@interface NSURLRequest : NSObject
@property(readonly, copy) NSURL* URL;
@property(readonly) NSURLRequestCachePolicy cachePolicy;
@property(readonly) NSTimeInterval timeoutInterval;
@end

@interface NSMutableURLRequest : NSURLRequest
+ (instancetype)requestWithURL:(NSURL*)URL
                   cachePolicy:(NSURLRequestCachePolicy)cachePolicy
               timeoutInterval:(NSTimeInterval)timeoutInterval;
@property BOOL HTTPShouldHandleCookies;
- (void)setValue:(NSString*)value forHTTPHeaderField:(NSString*)field;
@end
