#include "platform/macos/desktop/XpcHelperLink.h"

#include <atomic>
#include <optional>
#include <utility>

#import <Foundation/Foundation.h>

#include "platform/FanHelperProtocol.h"
#include "platform/Lifetime.h"
#include "platform/MainLoopExit.h"
#include "platform/OneLine.h"
#include "platform/macos/FanHelperXpc.h"
#include "platform/macos/NSStringText.h"
#include "platform/macos/StatusDictionary.h"

namespace corvane {

namespace {

constexpr NSUInteger longestAnswerText = 65536;
constexpr const char* wrongAnswerForm = "The helper's answer does not have the agreed form.";

/// Nothing when the helper sent another form than a text's.
std::optional<HelperAnswer> readText(BOOL ok, NSString* text) {
    const bool isText = [text isKindOfClass:[NSString class]] &&
                        [text lengthOfBytesUsingEncoding:NSUTF8StringEncoding] <= longestAnswerText;
    return isText ? std::optional<HelperAnswer>(TextAnswer{static_cast<bool>(ok), textOf(text)})
                  : std::nullopt;
}

std::optional<HelperAnswer> readStatus(NSDictionary<NSString*, id>* status) {
    std::optional<StatusRecord> record = recordOf(status);
    return record ? std::optional<HelperAnswer>(std::move(*record)) : std::nullopt;
}

bool isXpcError(NSError* error, NSInteger code) {
    return error.code == code && [error.domain isEqualToString:NSCocoaErrorDomain];
}

}  // namespace

class XpcHelperLink::Connection {
public:
    Connection(SerialQueue& mainLoop, XpcHelperLinkEvents events)
        : events_(std::move(events)),
          exit_(std::make_shared<MainLoopExit>(mainLoop)),
          connection_([[NSXPCConnection alloc]
              initWithMachServiceName:stringOf(FanHelperProtocol::serviceName)
                              options:NSXPCConnectionPrivileged]) {
        connection_.remoteObjectInterface = makeFanHelperInterface();
        const auto interrupted = onMainLoop(&XpcHelperLinkEvents::interrupted);
        const auto lastSent = lastSent_;
        connection_.interruptionHandler = ^{
          interrupted(*lastSent);
        };
        const auto invalidated = onMainLoop(&XpcHelperLinkEvents::invalidated);
        connection_.invalidationHandler = ^{
          invalidated();
        };
        [connection_ resume];
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() {
        exit_->close();
        [connection_ invalidate];
    }

    /// Where a message for `call` goes.
    id<FanHelperProtocol> remote(CallId call) {
        *lastSent_ = call;
        const auto failed = onMainLoop(&XpcHelperLinkEvents::failed);
        const auto invalidated = onMainLoop(&XpcHelperLinkEvents::invalidated);
        return [connection_ remoteObjectProxyWithErrorHandler:^(NSError* error) {
          @autoreleasepool {
              if (isXpcError(error, NSXPCConnectionInvalid)) {
                  invalidated();
              } else if (!isXpcError(error, NSXPCConnectionInterrupted)) {
                  failed(call, oneLine(textOf(error.localizedDescription)));
              }
              // An interruption is told once for all calls, by its own handler.
          }
        }];
    }

    void (^textReply(CallId call))(BOOL ok, NSString* text) {
        const auto tell = answering(call);
        return ^(BOOL ok, NSString* text) {
          @autoreleasepool {
              tell(readText(ok, text));
          }
        };
    }

    void (^statusReply(CallId call))(NSDictionary<NSString*, id>* status) {
        const auto tell = answering(call);
        return ^(NSDictionary<NSString*, id>* status) {
          @autoreleasepool {
              tell(readStatus(status));
          }
        };
    }

private:
    /// What takes the answer to a call, or that it cannot be read.
    std::function<void(std::optional<HelperAnswer>)> answering(CallId call) {
        return [call, answered = onMainLoop(&XpcHelperLinkEvents::answered),
                failed = onMainLoop(&XpcHelperLinkEvents::failed)](std::optional<HelperAnswer> answer) {
            if (answer) {
                answered(call, std::move(*answer));
            } else {
                failed(call, wrongAnswerForm);
            }
        };
    }

    /// A function for any thread, whose call reaches `event` on the main loop.
    template <typename... Values>
    std::function<void(Values...)> onMainLoop(std::function<void(Values...)> XpcHelperLinkEvents::*event) {
        auto tell = lifetime_.bound([this, event](const auto&... values) {
            // A copy: what it does may end the link.
            const auto handler = events_.*event;
            handler(values...);
        });
        return [exit = exit_, tell = std::move(tell)](Values... values) {
            exit->toMainLoop([tell, ... values = std::move(values)]() mutable { tell(values...); });
        };
    }

    XpcHelperLinkEvents events_;
    std::shared_ptr<MainLoopExit> exit_;
    Lifetime lifetime_;
    /// The interruption's handler reads it, on a thread of XPC's.
    std::shared_ptr<std::atomic<CallId>> lastSent_ = std::make_shared<std::atomic<CallId>>(0);
    NSXPCConnection* connection_;
};

XpcHelperLink::XpcHelperLink(SerialQueue& mainLoop, XpcHelperLinkEvents events)
    : connection_(std::make_unique<Connection>(mainLoop, std::move(events))) {}

XpcHelperLink::~XpcHelperLink() = default;

void XpcHelperLink::ping(CallId call) {
    @autoreleasepool {
        [connection_->remote(call) pingWithReply:connection_->textReply(call)];
    }
}

void XpcHelperLink::getStatus(CallId call) {
    @autoreleasepool {
        [connection_->remote(call) getStatusWithReply:connection_->statusReply(call)];
    }
}

void XpcHelperLink::setFanFloor(CallId call, double percent) {
    @autoreleasepool {
        [connection_->remote(call) setFanFloorWithPercent:percent withReply:connection_->textReply(call)];
    }
}

void XpcHelperLink::stopBoost(CallId call) {
    @autoreleasepool {
        [connection_->remote(call) stopBoostWithReply:connection_->textReply(call)];
    }
}

void XpcHelperLink::setLidStayAwake(CallId call, bool on) {
    @autoreleasepool {
        [connection_->remote(call) setLidStayAwake:on withReply:connection_->textReply(call)];
    }
}

}  // namespace corvane
