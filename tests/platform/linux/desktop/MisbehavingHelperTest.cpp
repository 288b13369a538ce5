// The connection and helpers that break every rule, on a bus of their own.

#include <chrono>
#include <map>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/linux/StatusCodec.h"
#include "tests/support/HelperClient.h"
#include "tests/support/MisbehavingHelper.h"
#include "tests/support/PrivateBus.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

constexpr const char* wrongForm = "failed: The helper's answer does not have the agreed form.";

class MisbehavingHelperTest : public testing::Test {
protected:
    using Behaviour = MisbehavingHelper::Behaviour;

    void SetUp() override {
        if (bus.problem()) {
            GTEST_SKIP() << *bus.problem();
        }
    }

    /// What a client is told after asking a helper with this behaviour for its status.
    std::string toldOfStatus(const Behaviour& behaviour) {
        const MisbehavingHelper helper(bus.address(), behaviour);
        HelperClient client(bus.address());
        client.status();
        return client.told().waitFor(1) ? client.told().all().front() : "nothing";
    }

    /// What a client is told by each of the members that answer with a text.
    std::vector<std::string> toldOfTexts(const Behaviour& behaviour) {
        const MisbehavingHelper helper(bus.address(), behaviour);
        HelperClient client(bus.address());
        client.ping();
        client.setFanFloor(50);
        client.stopBoost();
        client.setLidStayAwake(true);
        EXPECT_TRUE(client.told().waitFor(4));
        return client.told().all();
    }

    PrivateBus bus;
};

/// A status whose one value is `value`.
template <typename T>
BusDictionary statusOf(const T& value) {
    return {{"key", sdbus::Variant(value)}};
}

BusDictionary nestedStatus(int levels) {
    return levels == 1 ? BusDictionary() : statusOf(std::vector<BusDictionary>{nestedStatus(levels - 1)});
}

sdbus::Variant nestedVariant(int levels) {
    return levels == 1 ? sdbus::Variant(1)
                       : sdbus::Variant(std::vector<sdbus::Variant>{nestedVariant(levels - 1)});
}

TEST_F(MisbehavingHelperTest, ReportsEachCallThatStaysUnanswered) {
    MisbehavingHelper helper(bus.address(), MisbehavingHelper::silence());
    HelperClient client(bus.address(), 50ms);
    for (int i = 0; i < 5; ++i) {
        client.status();
    }
    ASSERT_TRUE(client.told().waitFor(5));
    EXPECT_THAT(client.told().all(),
                ElementsAre(HelperClient::tooLate, HelperClient::tooLate, HelperClient::tooLate,
                            HelperClient::tooLate, HelperClient::tooLate));
}

TEST_F(MisbehavingHelperTest, ReportsNoMoreOnceTheFirstReportDestroyedTheConnection) {
    MisbehavingHelper helper(bus.address(), MisbehavingHelper::silence());
    HelperClient client(bus.address(), 50ms);
    client.afterEachNote([&] { client.disconnect(); });
    client.use([&](FanHelperProtocol& remote) {
        for (int i = 0; i < 5; ++i) {
            remote.getStatusWithReply([](const StatusRecord& /*status*/) { FAIL(); });
        }
    });
    ASSERT_TRUE(client.told().waitFor(1));
    // A later call's failure comes after all that could still have come of the earlier ones.
    client.connect();
    client.status();
    ASSERT_TRUE(client.told().waitFor(2));
    EXPECT_THAT(client.told().all(), ElementsAre(HelperClient::tooLate, HelperClient::tooLate));
}

TEST_F(MisbehavingHelperTest, IgnoresAReplyThatComesTooLate) {
    MisbehavingHelper helper(bus.address(), MisbehavingHelper::silence());
    HelperClient client(bus.address(), 50ms);
    client.status();
    ASSERT_TRUE(client.told().waitFor(1));
    ASSERT_TRUE(helper.calls().waitFor(1));
    MisbehavingHelper::send(*helper.calls().all().front(), BusDictionary());
    // The bus tells this after it has delivered the reply.
    helper.dropName();
    ASSERT_TRUE(client.told().waitFor(2));
    EXPECT_THAT(client.told().all(), ElementsAre(HelperClient::tooLate, "interrupted"));
}

TEST_F(MisbehavingHelperTest, TellsTheMessageOfAnErrorInOneTameLine) {
    const auto told = [this](const std::string& error, const std::string& message) {
        return toldOfStatus(MisbehavingHelper::refuse(error, message));
    };
    EXPECT_EQ(told("com.example.Error", "It\nbroke.\x1B[2J"), "failed: It broke. [2J");
    EXPECT_EQ(told("com.example.Error", ""), "failed: com.example.Error");
    EXPECT_EQ(told("com.example.Error", std::string(100'000, 'x')),
              fmt::format("failed: {}…", std::string(200, 'x')));
}

TEST_F(MisbehavingHelperTest, TakesTheBusesOwnErrorsFromTheHelperForOrdinaryOnes) {
    for (const char* error : {"org.freedesktop.DBus.Error.ServiceUnknown",
                              "org.freedesktop.DBus.Error.NoReply", "org.freedesktop.systemd1.NoSuchUnit"}) {
        EXPECT_EQ(toldOfStatus(MisbehavingHelper::refuse(error, "forged")), "failed: forged");
    }
}

TEST_F(MisbehavingHelperTest, FailsOnRepliesOfAnotherFormThanATextsOne) {
    const std::string text = "text";
    for (const Behaviour& behaviour :
         {MisbehavingHelper::answer(), MisbehavingHelper::answer(true), MisbehavingHelper::answer(text),
          MisbehavingHelper::answer(text, true), MisbehavingHelper::answer(std::int32_t{1}, text),
          MisbehavingHelper::answer(true, sdbus::ObjectPath("/")), MisbehavingHelper::answer(BusDictionary()),
          MisbehavingHelper::answer(sdbus::Struct<bool, std::string>(true, text)),
          MisbehavingHelper::answer(true, text, text),
          MisbehavingHelper::answer(true, std::string(70'000, 'x'))}) {
        EXPECT_THAT(toldOfTexts(behaviour), ElementsAre(wrongForm, wrongForm, wrongForm, wrongForm));
    }
}

TEST_F(MisbehavingHelperTest, FailsOnRepliesOfAnotherFormThanAStatus) {
    for (const Behaviour& behaviour :
         {MisbehavingHelper::answer(), MisbehavingHelper::answer(true),
          MisbehavingHelper::answer(std::string("text")),
          MisbehavingHelper::answer(std::map<std::string, std::string>{{"key", "value"}}),
          MisbehavingHelper::answer(std::vector<BusDictionary>{{}}),
          MisbehavingHelper::answer(sdbus::Variant(BusDictionary())),
          MisbehavingHelper::answer(BusDictionary(), true)}) {
        EXPECT_EQ(toldOfStatus(behaviour), wrongForm);
    }
}

TEST_F(MisbehavingHelperTest, FailsOnAStatusTooLargeOrTooDeep) {
    BusDictionary wide;
    for (int i = 0; i < 2'000; ++i) {
        wide.emplace(std::to_string(i), sdbus::Variant(i));
    }
    EXPECT_EQ(toldOfStatus(MisbehavingHelper::answer(wide)), wrongForm);
    EXPECT_EQ(toldOfStatus(MisbehavingHelper::answer(statusOf(std::string(5'000'000, 'x')))), wrongForm);
    EXPECT_EQ(toldOfStatus(MisbehavingHelper::answer(statusOf(std::vector<BusDictionary>(100'000)))),
              wrongForm);
    EXPECT_EQ(toldOfStatus(MisbehavingHelper::answer(nestedStatus(10))), wrongForm);
}

TEST_F(MisbehavingHelperTest, PassesOverValuesOfWrongTypesInAStatus) {
    for (const BusDictionary& status :
         {statusOf(std::vector<std::vector<std::string>>(100, std::vector<std::string>(100, "x"))),
          statusOf(std::vector<std::uint8_t>(1'000'000)), statusOf(sdbus::UnixFd(STDERR_FILENO)),
          statusOf(std::vector<sdbus::UnixFd>(5, sdbus::UnixFd(STDERR_FILENO))),
          statusOf(sdbus::Struct<std::int32_t, std::string>(1, "x")),
          BusDictionary{{"key", nestedVariant(15)}},
          statusOf(BusDictionary{{"inner", sdbus::Variant(true)}})}) {
        BusDictionary sent = status;
        sent.emplace("later", sdbus::Variant(42.0));
        const MisbehavingHelper helper(bus.address(), MisbehavingHelper::answer(sent));
        HelperClient client(bus.address());
        client.status();
        ASSERT_TRUE(client.told().waitFor(1));
        EXPECT_THAT(client.told().all(), ElementsAre("status of 2"));
        const StatusRecord record = client.lastStatus();
        EXPECT_NE(record.get<std::monostate>("key"), nullptr);
        EXPECT_THAT(record.get<double>("later"), testing::Pointee(42.0));
    }
}

TEST_F(MisbehavingHelperTest, IsInterruptedOnceByAHelperThatIsReplacedInTheMiddleOfACall) {
    MisbehavingHelper former(bus.address(), MisbehavingHelper::silence());
    HelperClient client(bus.address());
    client.status();
    client.ping();
    ASSERT_TRUE(former.calls().waitFor(2));
    MisbehavingHelper next(bus.address(), MisbehavingHelper::answer(true, std::string("next")));
    ASSERT_TRUE(client.told().waitFor(1));
    // The former one lives on and answers after all.
    MisbehavingHelper::send(*former.calls().all().at(0), BusDictionary());
    MisbehavingHelper::send(*former.calls().all().at(1), true, std::string("former"));
    client.ping();
    ASSERT_TRUE(client.told().waitFor(2));
    EXPECT_THAT(client.told().all(), ElementsAre("interrupted", "ok: next"));
}

TEST_F(MisbehavingHelperTest, IsInterruptedOnceByAHelperThatGivesItsNameUp) {
    MisbehavingHelper former(bus.address(), MisbehavingHelper::silence());
    HelperClient client(bus.address());
    client.status();
    ASSERT_TRUE(former.calls().waitFor(1));
    former.dropName();
    ASSERT_TRUE(client.told().waitFor(1));
    client.status();
    ASSERT_TRUE(client.told().waitFor(2));
    EXPECT_THAT(client.told().all(), ElementsAre("interrupted", "invalidated"));
}

TEST_F(MisbehavingHelperTest, BelievesOnlyTheBusThatTheHelperLeft) {
    MisbehavingHelper helper(bus.address(), MisbehavingHelper::answer(true, std::string("here")));
    HelperClient client(bus.address());
    client.ping();
    ASSERT_TRUE(client.told().waitFor(1));
    helper.forgeOwnerChange(helper.calls().all().front()->getSender());
    client.ping();
    ASSERT_TRUE(client.told().waitFor(2));
    EXPECT_THAT(client.told().all(), ElementsAre("ok: here", "ok: here"));
}

}  // namespace
}  // namespace corvane
