#import "platform/macos/desktop/HttpsTransfer.h"

#include <utility>

#import "platform/macos/desktop/HttpsDelegate.h"

namespace corvane {

namespace {

/// Keeps nothing, knows nothing of the user, and has nothing to log in with.
NSURLSessionConfiguration* configurationFor(NSTimeInterval timeout) {
    NSURLSessionConfiguration* configuration = NSURLSessionConfiguration.ephemeralSessionConfiguration;
    configuration.requestCachePolicy = NSURLRequestReloadIgnoringLocalCacheData;
    configuration.timeoutIntervalForRequest = timeout;
    configuration.timeoutIntervalForResource = timeout;
    configuration.HTTPShouldSetCookies = NO;
    configuration.HTTPCookieStorage = nil;
    configuration.URLCredentialStorage = nil;
    configuration.URLCache = nil;
    return configuration;
}

NSURLRequest* requestFor(NSURL* url, NSTimeInterval timeout) {
    NSMutableURLRequest* request =
        [NSMutableURLRequest requestWithURL:url
                                cachePolicy:NSURLRequestReloadIgnoringLocalCacheData
                            timeoutInterval:timeout];
    request.HTTPShouldHandleCookies = NO;
    // In place of what the system would tell of itself and of the user's language.
    [request setValue:@"Corvane" forHTTPHeaderField:@"User-Agent"];
    [request setValue:@"*/*" forHTTPHeaderField:@"Accept"];
    [request setValue:@"*" forHTTPHeaderField:@"Accept-Language"];
    // The answer as it is: nothing is unpacked that would grow.
    [request setValue:@"identity" forHTTPHeaderField:@"Accept-Encoding"];
    // From caches on the way, too.
    [request setValue:@"no-cache" forHTTPHeaderField:@"Cache-Control"];
    return request;
}

NSTimeInterval inSeconds(Duration duration) {
    return std::chrono::duration<NSTimeInterval>(duration).count();
}

}  // namespace

HttpsTransfer::HttpsTransfer(SerialQueue& mainLoop, NSURL* url, const HttpsClient::Request& wanted,
                             HttpsClient::Done done)
    : done_(std::move(done)), replies_(mainLoop) {
    auto tell = replies_.await([this](std::optional<std::string> body) { finish(std::move(body)); });
    const NSTimeInterval timeout = inSeconds(wanted.timeout);
    session_ = [NSURLSession
        sessionWithConfiguration:configurationFor(timeout)
                        delegate:[[CorvaneHttpsDelegate alloc] initWithLargestBody:wanted.largestBody
                                                                          finished:std::move(tell)]
                   delegateQueue:nil];
    [[session_ dataTaskWithRequest:requestFor(url, timeout)] resume];
    timeout_ = mainLoop.after(wanted.timeout, [this] { finish(std::nullopt); });
}

HttpsTransfer::~HttpsTransfer() {
    [session_ invalidateAndCancel];
}

void HttpsTransfer::finish(std::optional<std::string> body) {
    timeout_.reset();
    if (done_) {
        std::exchange(done_, nullptr)(std::move(body));
    }
}

}  // namespace corvane
