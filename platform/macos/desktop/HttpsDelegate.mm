#import "platform/macos/desktop/HttpsDelegate.h"

#include <utility>

#include "platform/macos/NSStringText.h"
#include "platform/macos/desktop/MacHttpsUrl.h"

namespace {

constexpr int mostRedirects = 5;

/// A server that announced more than came has not sent everything.
bool isWhole(NSURLResponse* response, std::size_t received) {
    return [response isKindOfClass:[NSHTTPURLResponse class]] &&
           response.expectedContentLength <= static_cast<long long>(received);
}

}  // namespace

@implementation CorvaneHttpsDelegate {
    std::size_t _largestBody;
    std::function<void(std::optional<std::string>)> _finished;
    std::string _body;
    int _redirects;
    BOOL _isRefused;
}

- (instancetype)initWithLargestBody:(std::size_t)largestBody
                           finished:(std::function<void(std::optional<std::string>)>)finished {
    self = [super init];
    if (self) {
        _largestBody = largestBody;
        _finished = std::move(finished);
    }
    return self;
}

- (void)URLSession:(NSURLSession*)session
                          task:(NSURLSessionTask*)task
    willPerformHTTPRedirection:(NSHTTPURLResponse*)response
                    newRequest:(NSURLRequest*)request
             completionHandler:(void (^)(NSURLRequest*))completionHandler {
    const bool isFit = ++_redirects <= mostRedirects &&
                       corvane::httpsUrl(corvane::textOf(request.URL.absoluteString)) != nil;
    if (!isFit) {
        // The redirect itself is no answer.
        [self refuse:task];
    }
    completionHandler(isFit ? request : nil);
}

- (void)URLSession:(NSURLSession*)session dataTask:(NSURLSessionDataTask*)task didReceiveData:(NSData*)data {
    if (_isRefused || data.length > _largestBody - _body.size()) {
        [self refuse:task];
        return;
    }
    _body.append(static_cast<const char*>(data.bytes), data.length);
}

- (void)URLSession:(NSURLSession*)session task:(NSURLSessionTask*)task didCompleteWithError:(NSError*)error {
    const bool isComplete = error == nil && !_isRefused && isWhole(task.response, _body.size());
    const auto finished = std::exchange(_finished, nullptr);
    finished(isComplete ? std::optional(std::move(_body)) : std::nullopt);
}

- (void)refuse:(NSURLSessionTask*)task {
    _isRefused = YES;
    [task cancel];
}

@end
