#include <optional>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/shell/Notifier.h"
#include "platform/simulated/RecordingNotificationCenter.h"
#include "platform/simulated/VirtualTime.h"

namespace corvane {
namespace {

using testing::MatchesRegex;

class NotifierTest : public testing::Test {
protected:
    void ask() {
        notifier->requestAuthorizationIfNeeded();
        time.settle();
    }
    void post(const char* title, const char* body) {
        notifier->notify(title, body);
        time.settle();
    }

    VirtualTime time;
    VirtualQueue mainLoop{time};
    RecordingNotificationCenter center{mainLoop};
    std::optional<Notifier> notifier{center};
};

TEST_F(NotifierTest, PostsTitleAndBodyAsTheyAre) {
    post("🔥 CPU sehr heiß", "Die CPU liegt bei 97 °C. <b>&amp;");
    ASSERT_EQ(center.posted().size(), 1U);
    EXPECT_EQ(center.posted()[0].title, "🔥 CPU sehr heiß");
    EXPECT_EQ(center.posted()[0].body, "Die CPU liegt bei 97 °C. <b>&amp;");
}

TEST_F(NotifierTest, GivesEachNotificationAnIdentifierOfItsOwn) {
    std::set<std::string> identifiers;
    for (int i = 0; i < 100; ++i) {
        post("same", "same");
    }
    for (const UserNotification& notification : center.posted()) {
        identifiers.insert(notification.identifier);
        EXPECT_THAT(notification.identifier,
                    MatchesRegex("[0-9a-fA-F]{8}(-[0-9a-fA-F]{4}){3}-[0-9a-fA-F]{12}"));
    }
    EXPECT_EQ(identifiers.size(), 100U);
}

TEST_F(NotifierTest, PostsWhenPermissionIsProvisional) {
    center.setAuthorization(NotificationAuthorization::provisional);
    post("title", "body");
    EXPECT_EQ(center.posted().size(), 1U);
}

TEST_F(NotifierTest, DropsWhatTheUserHasNotAllowed) {
    for (const auto authorization :
         {NotificationAuthorization::notDetermined, NotificationAuthorization::denied}) {
        center.setAuthorization(authorization);
        post("title", "body");
    }
    EXPECT_TRUE(center.posted().empty());
}

TEST_F(NotifierTest, AsksForPermissionOnlyWhileItIsUndecided) {
    for (const auto authorization : {NotificationAuthorization::denied, NotificationAuthorization::authorized,
                                     NotificationAuthorization::provisional}) {
        center.setAuthorization(authorization);
        ask();
    }
    EXPECT_EQ(center.authorizationRequests(), 0);

    center.setAuthorization(NotificationAuthorization::notDetermined);
    ask();
    EXPECT_EQ(center.authorizationRequests(), 1);
}

TEST_F(NotifierTest, ShowsNotificationsInFrontFromTheFirstRequestOn) {
    post("title", "body");
    EXPECT_EQ(center.foregroundRequests(), 0);
    ask();
    ask();
    EXPECT_EQ(center.foregroundRequests(), 1);
}

TEST_F(NotifierTest, DoesNothingWithoutAnIdentityToPostUnder) {
    center.setAvailable(false);
    center.setAuthorization(NotificationAuthorization::notDetermined);
    ask();
    center.setAuthorization(NotificationAuthorization::authorized);
    post("title", "body");
    EXPECT_EQ(center.foregroundRequests(), 0);
    EXPECT_EQ(center.authorizationRequests(), 0);
    EXPECT_TRUE(center.posted().empty());
}

TEST_F(NotifierTest, PostsNothingOnceItIsGone) {
    notifier->notify("title", "body");
    notifier.reset();
    time.settle();
    EXPECT_TRUE(center.posted().empty());
}

}  // namespace
}  // namespace corvane
