// Fetching documents. From: Apple's public documentation of NSURLSession, its configuration, tasks and
// delegates.
#pragma once

#import <Foundation/NSData.h>
#import <Foundation/NSError.h>
#import <Foundation/NSURLRequest.h>
#import <Foundation/NSURLResponse.h>

@class NSHTTPCookieStorage, NSOperationQueue, NSURLCache, NSURLCredentialStorage, NSURLSession,
    NSURLSessionDataTask, NSURLSessionTask;

@interface NSURLSessionConfiguration : NSObject
// Keeps caches, cookies and credentials in memory at most. A new object each time.
@property(class, readonly, strong) NSURLSessionConfiguration* ephemeralSessionConfiguration;
@property NSTimeInterval timeoutIntervalForRequest;
@property NSTimeInterval timeoutIntervalForResource;
@property NSURLRequestCachePolicy requestCachePolicy;
@property BOOL HTTPShouldSetCookies;
@property(strong) NSHTTPCookieStorage* HTTPCookieStorage;
@property(strong) NSURLCredentialStorage* URLCredentialStorage;
@property(strong) NSURLCache* URLCache;
@end

@protocol NSURLSessionDelegate <NSObject>
@end

@protocol NSURLSessionTaskDelegate <NSURLSessionDelegate>
@optional
// The handler takes the request to go on with, or nil to take the redirect itself for the answer.
- (void)URLSession:(NSURLSession*)session
                          task:(NSURLSessionTask*)task
    willPerformHTTPRedirection:(NSHTTPURLResponse*)response
                    newRequest:(NSURLRequest*)request
             completionHandler:(void (^)(NSURLRequest*))completionHandler;
// The last message about a task; the error is nil for a complete answer.
- (void)URLSession:(NSURLSession*)session task:(NSURLSessionTask*)task didCompleteWithError:(NSError*)error;
@end

@protocol NSURLSessionDataDelegate <NSURLSessionTaskDelegate>
@optional
- (void)URLSession:(NSURLSession*)session
          dataTask:(NSURLSessionDataTask*)dataTask
    didReceiveData:(NSData*)data;
@end

// Keeps its delegate until it is invalidated and its tasks are over.
@interface NSURLSession : NSObject
// Messages come one at a time, on a queue of the session's own when `queue` is nil.
+ (NSURLSession*)sessionWithConfiguration:(NSURLSessionConfiguration*)configuration
                                 delegate:(id<NSURLSessionDelegate>)delegate
                            delegateQueue:(NSOperationQueue*)queue;
- (NSURLSessionDataTask*)dataTaskWithRequest:(NSURLRequest*)request;
// Tasks under way complete with an error.
- (void)invalidateAndCancel;
@end

@interface NSURLSessionTask : NSObject
@property(readonly, copy) NSURLResponse* response;
- (void)cancel;
// Tasks are made suspended.
- (void)resume;
@end

@interface NSURLSessionDataTask : NSURLSessionTask
@end
