#include "tests/platform/macos/fakes/Foundation/FakeWeb.h"

#include <utility>

#import <Foundation/Foundation.h>

#include "platform/macos/NSStringText.h"
#import "tests/platform/macos/fakes/Foundation/WebObjects.h"
#include "tests/platform/macos/fakes/objc/Complaints.h"

namespace corvane {

namespace {

FakeWeb::State* currentWeb = nullptr;

}  // namespace

FakeWeb::State::State() {
    currentWeb = this;
}

FakeWeb::State::~State() {
    if (sessions != 0) {
        objc::complain("a session was not invalidated, and keeps its delegate");
    }
    currentWeb = nullptr;
}

FakeWeb::State& FakeWeb::State::shared() {
    if (currentWeb == nullptr) {
        objc::fatal("the web is used without a FakeWeb");
    }
    return *currentWeb;
}

FakeWeb::FakeWeb() : state_(std::make_unique<State>()) {}

FakeWeb::~FakeWeb() = default;

void FakeWeb::set(const std::string& url, Answer answer) {
    state_->answers.insert_or_assign(url, std::move(answer));
}

const std::vector<FakeWeb::Request>& FakeWeb::requests() const {
    return state_->requests;
}

const std::vector<std::string>& FakeWeb::asked() const {
    return state_->asked;
}

int FakeWeb::sessions() const {
    return state_->sessions;
}

}  // namespace corvane

@implementation NSURLRequest

- (instancetype)initWithURL:(NSURL*)URL
                cachePolicy:(NSURLRequestCachePolicy)cachePolicy
            timeoutInterval:(NSTimeInterval)timeoutInterval {
    self = [super init];
    if (self) {
        _URL = URL;
        _cachePolicy = cachePolicy;
        _timeoutInterval = timeoutInterval;
    }
    return self;
}

@end

@implementation NSMutableURLRequest {
    std::map<std::string, std::string> _headers;
}

+ (instancetype)requestWithURL:(NSURL*)URL
                   cachePolicy:(NSURLRequestCachePolicy)cachePolicy
               timeoutInterval:(NSTimeInterval)timeoutInterval {
    NSMutableURLRequest* request = [[NSMutableURLRequest alloc] initWithURL:URL
                                                                cachePolicy:cachePolicy
                                                            timeoutInterval:timeoutInterval];
    request.HTTPShouldHandleCookies = YES;
    return request;
}

- (void)setValue:(NSString*)value forHTTPHeaderField:(NSString*)field {
    _headers[corvane::textOf(field)] = corvane::textOf(value);
}

- (std::map<std::string, std::string>)headers {
    return _headers;
}

@end

@implementation NSURLResponse

- (id)copyWithZone:(NSZone*)zone {
    return self;
}

@end

@implementation NSHTTPURLResponse
@end

@implementation NSURLSessionConfiguration

+ (NSURLSessionConfiguration*)ephemeralSessionConfiguration {
    NSURLSessionConfiguration* configuration = [[NSURLSessionConfiguration alloc] init];
    // It keeps all of this in memory.
    id store = [[NSObject alloc] init];
    configuration.HTTPShouldSetCookies = YES;
    configuration.HTTPCookieStorage = store;
    configuration.URLCredentialStorage = store;
    configuration.URLCache = store;
    return configuration;
}

- (BOOL)isBlank {
    return !self.HTTPShouldSetCookies && self.HTTPCookieStorage == nil && self.URLCredentialStorage == nil &&
           self.URLCache == nil && self.requestCachePolicy == NSURLRequestReloadIgnoringLocalCacheData;
}

@end
