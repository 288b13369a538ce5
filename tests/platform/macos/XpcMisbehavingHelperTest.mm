// The application's end of XPC, and a helper that breaks every rule.

#include <functional>

#import <Foundation/Foundation.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/FanHelperXpc.h"
#include "platform/macos/NSStringText.h"
#include "tests/platform/macos/XpcClient.h"
#include "tests/platform/macos/fakes/Foundation/XPC/FakeXpc.h"

using TextBlock = void (^)(BOOL ok, NSString* text);
using StatusBlock = void (^)(NSDictionary<NSString*, id>* status);

/// Answers as it is told to.
@interface MisbehavingHelper : NSObject <FanHelperProtocol, NSXPCListenerDelegate>
@property(copy) void (^answerText)(TextBlock reply);
@property(copy) void (^answerStatus)(StatusBlock reply);
@end

@implementation MisbehavingHelper
- (BOOL)listener:(NSXPCListener*)listener shouldAcceptNewConnection:(NSXPCConnection*)connection {
    (void)listener;
    connection.exportedInterface = corvane::makeFanHelperInterface();
    connection.exportedObject = self;
    [connection resume];
    return YES;
}
- (void)pingWithReply:(TextBlock)reply {
    self.answerText(reply);
}
- (void)getStatusWithReply:(StatusBlock)reply {
    self.answerStatus(reply);
}
- (void)setFanFloorWithPercent:(double)percent withReply:(TextBlock)reply {
    (void)percent;
    self.answerText(reply);
}
- (void)stopBoostWithReply:(TextBlock)reply {
    self.answerText(reply);
}
- (void)setLidStayAwake:(BOOL)on withReply:(TextBlock)reply {
    (void)on;
    self.answerText(reply);
}
@end

namespace corvane {
namespace {

using namespace std::chrono_literals;
using testing::Each;
using testing::ElementsAre;
using testing::StartsWith;

constexpr const char* wrongForm = "failed: The helper's answer does not have the agreed form.";

class XpcMisbehavingHelperTest : public testing::Test {
protected:
    XpcMisbehavingHelperTest() {
        xpc.install(service);
        helper = [[MisbehavingHelper alloc] init];
        listener = [[NSXPCListener alloc] initWithMachServiceName:stringOf(service)];
        listener.delegate = helper;
        [listener resume];
    }
    ~XpcMisbehavingHelperTest() override { [listener invalidate]; }

    /// What a client is told that asks for the status.
    std::vector<std::string> toldOfStatus(void (^answer)(StatusBlock reply)) {
        helper.answerStatus = answer;
        XpcClient client;
        client.status();
        time.advance(5s);
        last = client.last;
        return client.takeTold();
    }

    std::vector<std::string> toldOfTexts(void (^answer)(TextBlock reply)) {
        helper.answerText = answer;
        XpcClient client;
        client.ping();
        client.setFanFloor(50.0);
        client.stopBoost();
        client.setLidStayAwake(true);
        time.advance(5s);
        return client.takeTold();
    }

    const std::string service{FanHelperProtocol::serviceName};
    VirtualTime time;
    FakeDispatch dispatch{time};
    FakeXpc xpc;
    MisbehavingHelper* helper;
    NSXPCListener* listener;
    StatusRecord last;
};

TEST_F(XpcMisbehavingHelperTest, FailsOnTextsThatAreNone) {
    const std::vector<std::string> told = toldOfTexts(^(TextBlock reply) {
      reply(YES, nil);
    });
    EXPECT_THAT(told, ElementsAre(wrongForm, wrongForm, wrongForm, wrongForm));
}

TEST_F(XpcMisbehavingHelperTest, FailsOnTextsThatAreTooLong) {
    const std::string text(70'000, 'x');
    const std::vector<std::string> told = toldOfTexts(^(TextBlock reply) {
      reply(YES, stringOf(text));
    });
    EXPECT_THAT(told, ElementsAre(wrongForm, wrongForm, wrongForm, wrongForm));
}

TEST_F(XpcMisbehavingHelperTest, FailsOnWhatIsNoStatus) {
    EXPECT_THAT(toldOfStatus(^(StatusBlock reply) {
                  reply(nil);
                }),
                ElementsAre(wrongForm));
    EXPECT_THAT(toldOfStatus(^(StatusBlock reply) {
                  id list = @[ @1 ];
                  reply(list);
                }),
                ElementsAre(wrongForm));
}

TEST_F(XpcMisbehavingHelperTest, FailsOnClassesThatAreNotAllowed) {
    EXPECT_THAT(toldOfStatus(^(StatusBlock reply) {
                  reply(@{@"fans" : @[ @{@"index" : [NSNull null]} ]});
                }),
                ElementsAre(StartsWith("failed: ")));
}

TEST_F(XpcMisbehavingHelperTest, PassesOverValuesOfWrongTypesInAStatus) {
    EXPECT_THAT(toldOfStatus(^(StatusBlock reply) {
                  reply(@{@"fans" : @{@"inner" : @1}, @"cpuTemp" : @42.0, @"isBoosted" : @"yes"});
                }),
                ElementsAre("status of 3"));
    EXPECT_NE(last.get<std::monostate>("fans"), nullptr);
    EXPECT_THAT(last.get<double>("cpuTemp"), testing::Pointee(42.0));
    EXPECT_EQ(last.get<bool>("isBoosted"), nullptr);
}

TEST_F(XpcMisbehavingHelperTest, FailsWhenTheReplyIsThrownAway) {
    const std::vector<std::string> told = toldOfTexts(^(TextBlock reply) {
      (void)reply;
    });
    EXPECT_EQ(told.size(), 4U);
    EXPECT_THAT(told, Each(StartsWith("failed: ")));
}

}  // namespace
}  // namespace corvane
