#include "tests/platform/macos/fakes/Foundation/XPC/FakeFanHelperProxy.h"

#include <functional>
#include <utility>

#include <gtest/gtest.h>

#include "tests/platform/macos/fakes/Foundation/XPC/FakeXpcServices.h"
#include "tests/platform/macos/fakes/Foundation/XPC/NSXPCFakes.h"
#include "tests/platform/macos/fakes/Foundation/XPC/XpcCoding.h"

using corvane::FakeXpcCall;
using corvane::FakeXpcEnd;

namespace {

using TextBlock = void (^)(BOOL ok, NSString* text);
using StatusBlock = void (^)(NSDictionary<NSString*, id>* status);
using SharedCall = std::shared_ptr<FakeXpcCall>;

/// What the service gets in place of the sender's block. The block keeps the call, which it would not if it
/// were a reference.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
TextBlock travelling(TextBlock reply, SharedCall call) {
    TextBlock sendersReply = [reply copy];
    return ^(BOOL ok, NSString* text) {
      bool isAllowed = true;
      NSString* copy = corvane::copyAcross(text, [NSSet setWithObjects:[NSString class], nil], isAllowed);
      if (isAllowed) {
          call->reply([sendersReply, ok, copy] { sendersReply(ok, copy); });
      } else {
          call->fail(NSXPCConnectionReplyInvalid);
      }
    };
}

// NOLINTNEXTLINE(performance-unnecessary-value-param)
StatusBlock travelling(StatusBlock reply, SharedCall call, NSSet<Class>* classes) {
    StatusBlock sendersReply = [reply copy];
    return ^(NSDictionary<NSString*, id>* status) {
      bool isAllowed = true;
      NSDictionary<NSString*, id>* copy = corvane::copyAcross(status, classes, isAllowed);
      if (isAllowed) {
          call->reply([sendersReply, copy] { sendersReply(copy); });
      } else {
          call->fail(NSXPCConnectionReplyInvalid);
      }
    };
}

}  // namespace

@implementation FakeFanHelperProxy {
    std::shared_ptr<FakeXpcEnd> _end;
    void (^_errorHandler)(NSError* error);
}

- (instancetype)initWithEnd:(std::shared_ptr<FakeXpcEnd>)end errorHandler:(void (^)(NSError* error))handler {
    if ((self = [super init])) {
        EXPECT_TRUE([end->remoteInterface isOfProtocol:@protocol(FanHelperProtocol)]);
        _end = std::move(end);
        _errorHandler = [handler copy];
    }
    return self;
}

- (SharedCall)call {
    return std::make_shared<FakeXpcCall>(_end, _errorHandler);
}

- (void)send:(SEL)selector
        call:(const SharedCall&)call
     perform:(std::function<void(id<FanHelperProtocol>)>)perform {
    EXPECT_TRUE([_end->remoteInterface hasSelector:selector]);
    corvane::FakeXpcServices::current()->send(
        _end, call, selector, [perform = std::move(perform)](id exported) { perform(exported); });
}

- (void)pingWithReply:(TextBlock)reply {
    const SharedCall call = [self call];
    TextBlock block = travelling(reply, call);
    [self send:_cmd
           call:call
        perform:[block](id<FanHelperProtocol> helper) { [helper pingWithReply:block]; }];
}

- (void)getStatusWithReply:(StatusBlock)reply {
    const SharedCall call = [self call];
    StatusBlock block = travelling(reply, call, [_end->remoteInterface classesOfReplyTo:_cmd]);
    [self send:_cmd
           call:call
        perform:[block](id<FanHelperProtocol> helper) { [helper getStatusWithReply:block]; }];
}

- (void)setFanFloorWithPercent:(double)percent withReply:(TextBlock)reply {
    const SharedCall call = [self call];
    TextBlock block = travelling(reply, call);
    [self send:_cmd
           call:call
        perform:[block, percent](id<FanHelperProtocol> helper) {
            [helper setFanFloorWithPercent:percent withReply:block];
        }];
}

- (void)stopBoostWithReply:(TextBlock)reply {
    const SharedCall call = [self call];
    TextBlock block = travelling(reply, call);
    [self send:_cmd
           call:call
        perform:[block](id<FanHelperProtocol> helper) { [helper stopBoostWithReply:block]; }];
}

- (void)setLidStayAwake:(BOOL)on withReply:(TextBlock)reply {
    const SharedCall call = [self call];
    TextBlock block = travelling(reply, call);
    [self send:_cmd
           call:call
        perform:[block, on](id<FanHelperProtocol> helper) { [helper setLidStayAwake:on withReply:block]; }];
}

@end
