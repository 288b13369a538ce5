#include <utility>

#import <Foundation/Foundation.h>

#include "platform/macos/NSStringText.h"
#import "tests/platform/macos/fakes/Foundation/WebObjects.h"
#include "tests/platform/macos/fakes/objc/Complaints.h"

using corvane::FakeWeb;
using WebState = corvane::FakeWeb::State;

namespace {

// NSURLErrorCancelled and NSURLErrorNetworkConnectionLost of Foundation's public documentation.
constexpr NSInteger cancelledError = -999;
constexpr NSInteger connectionLostError = -1005;

NSError* webError(NSInteger code) {
    return [NSError errorWithDomain:@"NSURLErrorDomain" code:code userInfo:nil];
}

NSURLResponse* responseOf(const FakeWeb::Answer& answer) {
    NSURLResponse* response = nil;
    if (answer.isHttp) {
        NSHTTPURLResponse* http = [[NSHTTPURLResponse alloc] init];
        http.statusCode = answer.status;
        response = http;
    } else {
        response = [[NSURLResponse alloc] init];
    }
    response.expectedContentLength = answer.announcedLength.value_or(-1);
    return response;
}

}  // namespace

@implementation NSURLSessionTask {
    NSURLRequest* _request;
}

- (instancetype)initWithSession:(NSURLSession*)session request:(NSURLRequest*)request {
    self = [super init];
    if (self) {
        _session = session;
        _request = request;
    }
    return self;
}

- (void)resume {
    [self askForURL:_request.URL];
}

- (void)cancel {
    if (!self.isCancelled) {
        self.isCancelled = YES;
        [self completeSoonWithError:webError(cancelledError)];
    }
}

- (void)askForURL:(NSURL*)url {
    const std::string address = corvane::textOf(url.absoluteString);
    WebState::shared().asked.push_back(address);
    const auto found = WebState::shared().answers.find(address);
    if (found == WebState::shared().answers.end()) {
        [self completeSoonWithError:webError(connectionLostError)];
        return;
    }
    const FakeWeb::Answer answer = found->second;
    if (!answer.hangs) {
        NSURLSessionTask* task = self;
        [self.session onQueue:[task, answer] { [task take:answer]; }];
    }
}

- (void)take:(const FakeWeb::Answer&)answer {
    if (self.isCancelled) {
        return;
    }
    self.response = responseOf(answer);
    if (answer.location) {
        [self followTo:*answer.location];
        return;
    }
    for (const std::string& piece : answer.body) {
        NSData* data = [NSData dataWithBytes:piece.data() length:piece.size()];
        [self.session onQueue:[self, data] { [self deliver:data]; }];
    }
    [self completeSoonWithError:answer.breaks ? webError(connectionLostError) : nil];
}

- (void)deliver:(NSData*)data {
    if (!self.isCancelled) {
        [self.session.delegate URLSession:self.session
                                 dataTask:static_cast<NSURLSessionDataTask*>(self)
                           didReceiveData:data];
    }
}

- (void)followTo:(const std::string&)location {
    NSURL* url = [NSURL URLWithString:corvane::stringOf(location)];
    NSURLRequest* next = [[NSURLRequest alloc] initWithURL:url
                                               cachePolicy:_request.cachePolicy
                                           timeoutInterval:_request.timeoutInterval];
    __block int calls = 0;
    [self.session.delegate URLSession:self.session
                                 task:self
           willPerformHTTPRedirection:static_cast<NSHTTPURLResponse*>(self.response)
                           newRequest:next
                    completionHandler:^(NSURLRequest* request) {
                      ++calls;
                      if (self.isCancelled) {
                          return;
                      }
                      if (request == nil) {
                          // The redirect is the answer.
                          [self completeSoonWithError:nil];
                      } else {
                          [self askForURL:request.URL];
                      }
                    }];
    if (calls != 1) {
        corvane::objc::complain("the handler is to be called once");
    }
}

- (void)completeSoonWithError:(NSError*)error {
    [self.session onQueue:[self, error] {
        if (!self.isOver) {
            self.isOver = YES;
            [self.session.delegate URLSession:self.session task:self didCompleteWithError:error];
        }
    }];
}

@end

@implementation NSURLSessionDataTask
@end

@implementation NSURLSession {
    id<NSURLSessionDataDelegate> _delegate;
    NSURLSessionConfiguration* _configuration;
    std::unique_ptr<corvane::FakeQueue> _queue;
    NSURLSessionTask* _task;
}

+ (NSURLSession*)sessionWithConfiguration:(NSURLSessionConfiguration*)configuration
                                 delegate:(id<NSURLSessionDelegate>)delegate
                            delegateQueue:(NSOperationQueue*)queue {
    if (queue != nil) {
        corvane::objc::complain("the fake knows no operation queues");
    }
    NSURLSession* session = [[NSURLSession alloc] init];
    session->_configuration = configuration;
    session->_delegate = static_cast<id<NSURLSessionDataDelegate>>(delegate);
    session->_queue = std::make_unique<corvane::FakeQueue>();
    ++WebState::shared().sessions;
    return session;
}

- (id<NSURLSessionDataDelegate>)delegate {
    return _delegate;
}

- (void)onQueue:(std::function<void()>)work {
    _queue->async(std::move(work));
}

- (NSURLSessionDataTask*)dataTaskWithRequest:(NSURLRequest*)request {
    NSMutableURLRequest* mutableRequest = static_cast<NSMutableURLRequest*>(request);
    WebState::shared().requests.push_back(
        {.url = corvane::textOf(request.URL.absoluteString),
         .ignoresCache = request.cachePolicy == NSURLRequestReloadIgnoringLocalCacheData,
         .hasCookies = mutableRequest.HTTPShouldHandleCookies == YES,
         .timeout = request.timeoutInterval,
         .headers = mutableRequest.headers,
         .isSessionBlank = _configuration.isBlank == YES});
    NSURLSessionDataTask* task = [[NSURLSessionDataTask alloc] initWithSession:self request:request];
    _task = task;
    return task;
}

- (void)invalidateAndCancel {
    [_task cancel];
    // Once its last message is out, nothing is kept any more.
    NSURLSession* session = self;
    _queue->async([session] {
        session->_delegate = nil;
        session->_task = nil;
    });
    --WebState::shared().sessions;
}

@end
