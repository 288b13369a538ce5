#pragma once

// What the fakes of the network classes know of each other, beyond what the real ones tell.

#include <map>
#include <string>
#include <vector>

#import <Foundation/Foundation.h>

#include "tests/platform/macos/fakes/Foundation/FakeQueue.h"
#include "tests/platform/macos/fakes/Foundation/FakeWeb.h"

@interface NSURLRequest ()
- (instancetype)initWithURL:(NSURL*)URL
                cachePolicy:(NSURLRequestCachePolicy)cachePolicy
            timeoutInterval:(NSTimeInterval)timeoutInterval;
@end

@interface NSMutableURLRequest ()
@property(readonly) std::map<std::string, std::string> headers;
@end

@interface NSURLResponse ()
@property(readwrite) long long expectedContentLength;
@end

@interface NSHTTPURLResponse ()
@property(readwrite) NSInteger statusCode;
@end

@interface NSURLSessionConfiguration ()
/// Neither cookies nor credentials nor a cache.
@property(readonly) BOOL isBlank;
@end

@interface NSURLSessionTask ()
@property(readwrite, copy) NSURLResponse* response;
@property BOOL isOver;
@property BOOL isCancelled;
@property(weak) NSURLSession* session;
- (instancetype)initWithSession:(NSURLSession*)session request:(NSURLRequest*)request;
@end

@interface NSURLSession ()
@property(readonly) id<NSURLSessionDataDelegate> delegate;
- (void)onQueue:(std::function<void()>)work;
@end

namespace corvane {

class FakeWeb::State {
public:
    /// The one there is; the program ends without.
    static State& shared();

    State();
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State();

    std::map<std::string, Answer> answers;
    std::vector<Request> requests;
    std::vector<std::string> asked;
    int sessions = 0;
};

}  // namespace corvane
