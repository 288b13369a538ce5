#include <memory>
#include <optional>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/desktop/MacNotificationCenter.h"
#include "platform/simulated/VirtualTime.h"
#include "tests/platform/macos/fakes/Foundation/FakeBundles.h"
#include "tests/platform/macos/fakes/UserNotifications/FakeUserNotifications.h"
#include "tests/platform/macos/fakes/dispatch/FakeDispatch.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Posted = FakeUserNotifications::Posted;
using Presentation = FakeUserNotifications::Presentation;
using Status = FakeUserNotifications::Status;

class MacNotificationCenterTest : public testing::Test {
protected:
    void ask() {
        centre->getAuthorization([this](NotificationAuthorization authorization) {
            EXPECT_TRUE(dispatch.isOnMainThread());
            replies.push_back(authorization);
        });
    }

    FakeBundles bundles;
    VirtualTime time;
    FakeDispatch dispatch{time};
    FakeUserNotifications system;
    std::unique_ptr<MacNotificationCenter> centre =
        std::make_unique<MacNotificationCenter>(dispatch.mainQueue());
    std::vector<NotificationAuthorization> replies;
};

TEST_F(MacNotificationCenterTest, IsAvailableInABundle) {
    EXPECT_TRUE(centre->isAvailable());
}

TEST_F(MacNotificationCenterTest, TellsWhatTheUserHasDecided) {
    for (const Status status :
         {Status::notDetermined, Status::denied, Status::authorized, Status::provisional}) {
        system.setStatus(status);
        ask();
        time.settle();
    }
    EXPECT_THAT(replies,
                ElementsAre(NotificationAuthorization::notDetermined, NotificationAuthorization::denied,
                            NotificationAuthorization::authorized, NotificationAuthorization::provisional));
}

TEST_F(MacNotificationCenterTest, TakesADecisionThatIsNotKnownYetForANo) {
    system.setStatus(4);
    ask();
    time.settle();
    EXPECT_THAT(replies, ElementsAre(NotificationAuthorization::denied));
}

TEST_F(MacNotificationCenterTest, AnswersLaterAndEachOnce) {
    ask();
    ask();
    EXPECT_THAT(replies, IsEmpty());
    time.settle();
    time.settle();
    EXPECT_EQ(replies.size(), 2U);
}

TEST_F(MacNotificationCenterTest, AnswersNobodyOnceItIsGone) {
    system.hang();
    ask();
    centre.reset();
    system.answer();
    time.settle();
    EXPECT_THAT(replies, IsEmpty());
}

TEST_F(MacNotificationCenterTest, MayEndInAnAnswer) {
    centre->getAuthorization([this](NotificationAuthorization) { centre.reset(); });
    ask();
    time.settle();
    EXPECT_EQ(centre, nullptr);
    EXPECT_THAT(replies, IsEmpty());
}

TEST_F(MacNotificationCenterTest, AsksForAlertsAndSounds) {
    centre->requestAuthorization();
    time.settle();
    constexpr unsigned sound = 1U << 1U;
    constexpr unsigned alert = 1U << 2U;
    EXPECT_THAT(system.requests(), ElementsAre(sound | alert));
}

TEST_F(MacNotificationCenterTest, PostsAtOnceWithTheDefaultSound) {
    centre->add({.identifier = "1", .title = "🔥 CPU sehr heiß", .body = "Die CPU liegt bei 97 °C."});
    centre->add({.identifier = "2", .title = "", .body = ""});
    EXPECT_THAT(
        system.posted(),
        ElementsAre(
            Posted{.identifier = "1",
                   .title = "🔥 CPU sehr heiß",
                   .body = "Die CPU liegt bei 97 °C.",
                   .hasDefaultSound = true,
                   .hasTrigger = false},
            Posted{
                .identifier = "2", .title = "", .body = "", .hasDefaultSound = true, .hasTrigger = false}));
}

TEST_F(MacNotificationCenterTest, PostsTextsThatAreNotUtf8AsEmptyOnes) {
    centre->add({.identifier = "1", .title = "\xff", .body = "body"});
    ASSERT_EQ(system.posted().size(), 1U);
    EXPECT_EQ(system.posted().front().title, "");
}

TEST_F(MacNotificationCenterTest, ShowsInFrontWhatIsPostedOnceItIsAskedTo) {
    EXPECT_EQ(system.presentationInFront(), std::nullopt);
    centre->presentInForeground();
    EXPECT_EQ(system.presentationInFront(), (Presentation{.asBanner = true, .withSound = true}));
}

TEST_F(MacNotificationCenterTest, LeavesNobodyBehindThatDecidesWhatIsShownInFront) {
    centre->presentInForeground();
    centre.reset();
    EXPECT_EQ(system.presentationInFront(), std::nullopt);
}

TEST(UnbundledMacNotificationCenter, IsNotAvailable) {
    const FakeBundles bundles(std::nullopt, "/usr/local/bin");
    VirtualTime time;
    FakeDispatch dispatch(time);
    EXPECT_FALSE(MacNotificationCenter(dispatch.mainQueue()).isAvailable());
}

}  // namespace
}  // namespace corvane
