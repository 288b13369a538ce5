// Calls between two ends of one process over XPC, with the interface that application and helper share:
// whether the records of the one reach the other, and what comes where nobody answers. It needs no root and
// leaves nothing behind. Ends with 1 when something is not as the product takes it for granted.

#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#import <Foundation/Foundation.h>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include "platform/StatusRecord.h"
#include "platform/macos/FanHelperXpc.h"
#include "platform/macos/NSStringText.h"
#include "platform/macos/StatusDictionary.h"

/// Answers as the helper does, with a record of all that a status is made of.
@interface ProbedHelper : NSObject <FanHelperProtocol>
@end

@implementation ProbedHelper

- (void)pingWithReply:(void (^)(BOOL, NSString*))reply {
    reply(YES, @"pong");
}

- (void)getStatusWithReply:(void (^)(NSDictionary<NSString*, id>*))reply {
    NSDictionary* const fan = @{@"index" : @0, @"currentRPM" : @2317.5};
    reply(@{
        @"isBoosted" : @YES,
        @"lidStayAwake" : @NO,
        @"tempSensorCount" : @1,
        @"cpuTemp" : @64.5,
        @"floorPercent" : @60.0,
        @"fans" : @[ fan ]
    });
}

- (void)setFanFloorWithPercent:(double)percent withReply:(void (^)(BOOL, NSString*))reply {
    reply(YES, [NSString stringWithFormat:@"%.2f", percent]);
}

/// Answers never.
- (void)stopBoostWithReply:(void (^)(BOOL, NSString*))reply {
}

- (void)setLidStayAwake:(BOOL)on withReply:(void (^)(BOOL, NSString*))reply {
    reply(on, @"Lüfter");
}

@end

@interface ProbedListener : NSObject <NSXPCListenerDelegate>
@end

@implementation ProbedListener

- (BOOL)listener:(NSXPCListener*)listener shouldAcceptNewConnection:(NSXPCConnection*)newConnection {
    newConnection.exportedInterface = corvane::makeFanHelperInterface();
    newConnection.exportedObject = [[ProbedHelper alloc] init];
    [newConnection resume];
    return YES;
}

@end

namespace {

using corvane::StatusRecord;
using corvane::textOf;

constexpr std::chrono::seconds patience{5};

int mistakes = 0;

void expectSame(const char* what, const std::string& wanted, const std::string& found) {
    const bool isSame = wanted == found;
    std::printf("%s: %s%s\n", what, found.c_str(), isSame ? "" : " (not as expected)");
    mistakes += isSame ? 0 : 1;
}

/// What comes first: an answer, or an error.
class Outcome {
public:
    void set(const std::string& text) {
        if (!isSet_.exchange(true)) {
            text_.set_value(text);
        }
    }
    std::string wait() {
        std::future<std::string> text = text_.get_future();
        return text.wait_for(patience) == std::future_status::ready ? text.get() : "nothing within 5 s";
    }

private:
    std::atomic<bool> isSet_ = false;
    std::promise<std::string> text_;
};

using Answer = std::shared_ptr<Outcome>;
using Call = void (^)(id<FanHelperProtocol> helper, Answer outcome);

std::string outcomeOf(NSXPCConnection* connection, Call call) {
    const auto outcome = std::make_shared<Outcome>();
    call([connection remoteObjectProxyWithErrorHandler:^(NSError* error) {
           outcome->set("error " + std::to_string(error.code));
         }],
         outcome);
    return outcome->wait();
}

/// With its type, by which alone the product knows a Boolean from a 1 and a whole real from an integer.
std::string describe(const StatusRecord& record, const char* key) {
    if (const bool* truth = record.get<bool>(key)) {
        return *truth ? "yes" : "no";
    }
    if (const auto* integer = record.get<std::int32_t>(key)) {
        return fmt::format("integer {}", *integer);
    }
    const auto* real = record.get<double>(key);
    return real != nullptr ? fmt::format("real {}", *real) : "of no known type";
}

std::string describeStatus(NSDictionary<NSString*, id>* dictionary) {
    const std::optional<StatusRecord> status = corvane::recordOf(dictionary);
    const auto* fans = status ? status->get<std::vector<StatusRecord>>("fans") : nullptr;
    if (fans == nullptr || fans->size() != 1) {
        return "no status of one fan";
    }
    std::vector<std::string> values;
    for (const char* key : {"isBoosted", "lidStayAwake", "tempSensorCount", "cpuTemp", "floorPercent"}) {
        values.push_back(describe(*status, key));
    }
    for (const char* key : {"index", "currentRPM"}) {
        values.push_back(describe(fans->front(), key));
    }
    return fmt::format("{}", fmt::join(values, ", "));
}

void probeCalls(NSXPCConnection* connection) {
    expectSame("ping", "yes pong", outcomeOf(connection, ^(id<FanHelperProtocol> helper, Answer outcome) {
                 [helper pingWithReply:^(BOOL ok, NSString* text) {
                   outcome->set((ok ? "yes " : "no ") + textOf(text));
                 }];
               }));
    expectSame("status", "yes, no, integer 1, real 64.5, real 60, integer 0, real 2317.5",
               outcomeOf(connection, ^(id<FanHelperProtocol> helper, Answer outcome) {
                 [helper getStatusWithReply:^(NSDictionary<NSString*, id>* status) {
                   outcome->set(describeStatus(status));
                 }];
               }));
    expectSame("floor", "yes 62.50", outcomeOf(connection, ^(id<FanHelperProtocol> helper, Answer outcome) {
                 [helper setFanFloorWithPercent:62.5
                                      withReply:^(BOOL ok, NSString* text) {
                                        outcome->set((ok ? "yes " : "no ") + textOf(text));
                                      }];
               }));
    expectSame("lid", "yes Lüfter", outcomeOf(connection, ^(id<FanHelperProtocol> helper, Answer outcome) {
                 [helper setLidStayAwake:YES
                               withReply:^(BOOL ok, NSString* text) {
                                 outcome->set((ok ? "yes " : "no ") + textOf(text));
                               }];
               }));
    expectSame("call that is not answered", "error " + std::to_string(NSXPCConnectionReplyInvalid),
               outcomeOf(connection, ^(id<FanHelperProtocol> helper, Answer outcome) {
                 [helper stopBoostWithReply:^(BOOL, NSString*) {
                   outcome->set("an answer");
                 }];
               }));
}

void probeService() {
    NSXPCListener* const listener = [NSXPCListener anonymousListener];
    ProbedListener* const delegate = [[ProbedListener alloc] init];
    listener.delegate = delegate;
    [listener resume];
    NSXPCConnection* const connection = [[NSXPCConnection alloc] initWithListenerEndpoint:listener.endpoint];
    connection.remoteObjectInterface = corvane::makeFanHelperInterface();
    [connection resume];
    probeCalls(connection);
    [connection invalidate];
    [listener invalidate];
}

/// What a Mac says of a service that nobody offers.
void probeAbsence() {
    const auto invalidation = std::make_shared<Outcome>();
    NSXPCConnection* const connection =
        [[NSXPCConnection alloc] initWithMachServiceName:@"de.tavrin.corvane.no-such-service" options:0];
    connection.remoteObjectInterface = corvane::makeFanHelperInterface();
    connection.invalidationHandler = ^{
      invalidation->set("told");
    };
    [connection resume];
    expectSame("call of a service that is not there", "error " + std::to_string(NSXPCConnectionInvalid),
               outcomeOf(connection, ^(id<FanHelperProtocol> helper, Answer outcome) {
                 [helper pingWithReply:^(BOOL, NSString*) {
                   outcome->set("an answer");
                 }];
               }));
    expectSame("its invalidation", "told", invalidation->wait());
    [connection invalidate];
}

}  // namespace

int main() {
    @autoreleasepool {
        probeService();
        probeAbsence();
    }
    return mistakes == 0 ? 0 : 1;
}
