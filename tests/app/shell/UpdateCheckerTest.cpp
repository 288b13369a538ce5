#include <QVariant>
#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "app/shell/BuildInfo.h"
#include "app/shell/UpdateChecker.h"
#include "platform/simulated/RecordingUrlOpener.h"
#include "platform/simulated/SimulatedHttpsClient.h"
#include "platform/simulated/VirtualTime.h"
#include "tests/support/SignalCount.h"

namespace corvane {
namespace {

using Addresses = std::vector<std::string>;

constexpr const char* feedUrl = "https://corvane.example/appcast.json";
constexpr const char* homePage = "https://corvane.example/";

class UpdateCheckerTest : public testing::Test {
protected:
    UpdateCheckerTest() { open({.feedUrl = feedUrl, .homePage = homePage, .currentVersion = "1.9"}); }

    void open(UpdateCheckerConfiguration configuration) {
        checker.emplace(UpdateCheckerServices{client, opener}, std::move(configuration));
    }
    void check(std::optional<std::string> answer) {
        client.setBody(std::move(answer));
        checker->check();
        time.settle();
    }
    std::string latest() { return checker->latestVersion().toStdString(); }
    Addresses openedByDownload() {
        const auto before = static_cast<std::ptrdiff_t>(opener.opened().size());
        checker->openDownload();
        return {opener.opened().begin() + before, opener.opened().end()};
    }

    VirtualTime time;
    VirtualQueue mainLoop{time};
    SimulatedHttpsClient client{mainLoop};
    RecordingUrlOpener opener;
    std::optional<UpdateChecker> checker;
};

const std::string wholeFeed = R"({"shortVersion":"1.10","version":"47","url":"https://corvane.example/get",)"
                              R"("notes":"Cooler.","minimumSystem":13})";

TEST_F(UpdateCheckerTest, KnowsNothingAtFirst) {
    EXPECT_EQ(latest(), "");
    EXPECT_TRUE(checker->downloadURL().isEmpty());
    EXPECT_EQ(checker->releaseNotes(), "");
    EXPECT_EQ(checker->currentVersion(), "1.9");
    EXPECT_TRUE(client.requests().empty()) << "nothing is asked before it is wanted";
}

TEST_F(UpdateCheckerTest, AsksTheFeedWithinTenSecondsForALittleDocument) {
    check(std::nullopt);
    ASSERT_EQ(client.requests().size(), 1U);
    EXPECT_EQ(client.requests()[0].url, feedUrl);
    EXPECT_EQ(client.requests()[0].timeout, std::chrono::seconds(10));
    EXPECT_EQ(client.requests()[0].largestBody, 262'144U);
}

TEST_F(UpdateCheckerTest, ReturnsBeforeTheAnswerComes) {
    client.setBody(wholeFeed);
    checker->check();
    EXPECT_EQ(latest(), "");
    time.settle();
    EXPECT_EQ(latest(), "1.10");
}

TEST_F(UpdateCheckerTest, PublishesANewerVersion) {
    check(wholeFeed);
    EXPECT_EQ(latest(), "1.10") << "the short version is preferred";
    EXPECT_EQ(checker->downloadURL(), QUrl("https://corvane.example/get"));
    EXPECT_EQ(checker->releaseNotes(), "Cooler.");
    EXPECT_EQ(checker->property("latestVersion"), "1.10");
    EXPECT_EQ(checker->property("downloadURL"), QUrl("https://corvane.example/get"));
    EXPECT_EQ(checker->property("releaseNotes"), "Cooler.");
}

TEST_F(UpdateCheckerTest, TakesTheVersionWhenThereIsNoShortOne) {
    check(R"({"version":"2.0"})");
    EXPECT_EQ(latest(), "2.0");
    check(R"({"shortVersion":7,"version":"2.1"})");
    EXPECT_EQ(latest(), "2.1");
    check(R"({"shortVersion":null,"version":"2.2"})");
    EXPECT_EQ(latest(), "2.2");
}

TEST_F(UpdateCheckerTest, PrefersTheShortVersionEvenWhenItIsOlder) {
    check(R"({"shortVersion":"1.8","version":"2.0"})");
    EXPECT_EQ(latest(), "");
    check(R"({"shortVersion":"","version":"2.0"})");
    EXPECT_EQ(latest(), "");
}

TEST_F(UpdateCheckerTest, PublishesNoVersionThatIsNotNewer) {
    for (const char* version : {"1.9", "1.8", "1.09", "1", "0", ""}) {
        check(std::string(R"({"shortVersion":")") + version + R"(","url":"https://a.example/","notes":"x"})");
        EXPECT_EQ(latest(), "") << version;
        EXPECT_TRUE(checker->downloadURL().isEmpty());
        EXPECT_EQ(checker->releaseNotes(), "");
    }
    check(R"({"shortVersion":"1.9.0"})");
    EXPECT_EQ(latest(), "1.9.0") << "nothing is filled in";
}

TEST_F(UpdateCheckerTest, OffersNothingOlderToALaterVersion) {
    open({.feedUrl = feedUrl, .homePage = homePage, .currentVersion = "1.10"});
    check(R"({"shortVersion":"1.9"})");
    EXPECT_EQ(latest(), "");
}

TEST_F(UpdateCheckerTest, TakesBackAnUpdateThatIsOfferedNoMore) {
    check(wholeFeed);
    check(R"({"shortVersion":"1.9","url":"https://corvane.example/get","notes":"Old."})");
    EXPECT_EQ(latest(), "");
    EXPECT_TRUE(checker->downloadURL().isEmpty());
    EXPECT_EQ(checker->releaseNotes(), "");
}

TEST_F(UpdateCheckerTest, ForgetsWhatTheNextAnswerDoesNotSay) {
    check(wholeFeed);
    check(R"({"shortVersion":"1.11"})");
    EXPECT_EQ(latest(), "1.11");
    EXPECT_TRUE(checker->downloadURL().isEmpty());
    EXPECT_EQ(checker->releaseNotes(), "");
}

TEST_F(UpdateCheckerTest, LeavesEverythingAsItWasWhenAnAnswerIsNone) {
    check(wholeFeed);
    const std::vector<std::optional<std::string>> unusable{
        std::nullopt,
        "",
        "<html></html>",
        "[]",
        R"(["1.11"])",
        "null",
        R"("1.11")",
        "7",
        "{}",
        "{",
        R"({"shortVersion":7})",
        R"({"shortVersion":null,"version":["2"]})",
        R"({"version":2.0})",
        R"({"ShortVersion":"2.0"})",
        R"({"url":"https://a.example/","notes":"x"})",
        R"({"shortVersion":"1.9")",
        std::string("\0\xff", 2),
        std::string(200'000, '['),
    };
    for (const std::optional<std::string>& answer : unusable) {
        check(answer);
        EXPECT_EQ(latest(), "1.10") << answer.value_or("(none)");
        EXPECT_EQ(checker->downloadURL(), QUrl("https://corvane.example/get"));
        EXPECT_EQ(checker->releaseNotes(), "Cooler.");
    }
}

TEST_F(UpdateCheckerTest, CountsUrlAndNotesOfOtherTypesAsAbsent) {
    check(R"({"shortVersion":"2.0","url":7,"notes":["x"]})");
    EXPECT_EQ(latest(), "2.0");
    EXPECT_TRUE(checker->downloadURL().isEmpty());
    EXPECT_EQ(checker->releaseNotes(), "");
}

TEST_F(UpdateCheckerTest, OpensTheDownload) {
    check(wholeFeed);
    EXPECT_EQ(openedByDownload(), Addresses{"https://corvane.example/get"});
}

TEST_F(UpdateCheckerTest, OpensTheHomePageWithoutADownload) {
    EXPECT_EQ(openedByDownload(), Addresses{homePage});
    check(R"({"shortVersion":"2.0"})");
    EXPECT_EQ(latest(), "2.0");
    EXPECT_EQ(openedByDownload(), Addresses{homePage});
}

TEST_F(UpdateCheckerTest, OffersButNeverOpensWhatIsNotHttps) {
    for (const char* url :
         {"http://corvane.example/get", "file:///bin/sh", "javascript:alert(1)",
          "https://anybody@corvane.example/get", "data:text/html,x", "ftp://corvane.example/get",
          "//corvane.example/get", "get", "https:get", "https:///get", "https://"}) {
        check(std::string(R"({"shortVersion":"2.0","url":")") + url + R"("})");
        EXPECT_EQ(latest(), "2.0");
        EXPECT_EQ(openedByDownload(), Addresses{homePage}) << url;
    }
    check(R"({"shortVersion":"2.0","url":"http://corvane.example/get"})");
    EXPECT_EQ(checker->downloadURL(), QUrl("http://corvane.example/get"));
}

TEST_F(UpdateCheckerTest, CountsAnInvalidUrlAsAbsent) {
    for (const char* url : {"https://cor vane.example/", "https://corvane.example:x/", "https://[", ""}) {
        check(std::string(R"({"shortVersion":"2.0","url":")") + url + R"("})");
        EXPECT_EQ(latest(), "2.0");
        EXPECT_TRUE(checker->downloadURL().isEmpty()) << url;
        EXPECT_EQ(openedByDownload(), Addresses{homePage});
    }
}

TEST_F(UpdateCheckerTest, OpensAddressesInTheirPlainForm) {
    check(R"({"shortVersion":"2.0","url":"HTTPS://corvane.example/a?b=\u00e4&c=%20#d"})");
    EXPECT_EQ(openedByDownload(), Addresses{"https://corvane.example/a?b=%C3%A4&c=%20#d"});
}

TEST_F(UpdateCheckerTest, NeverAsksWithoutAFeed) {
    open({.feedUrl = "", .homePage = homePage, .currentVersion = "1.9"});
    EXPECT_FALSE(checker->canCheck());
    check(wholeFeed);
    EXPECT_TRUE(client.requests().empty());
    EXPECT_EQ(latest(), "");
}

TEST_F(UpdateCheckerTest, OpensNothingWithoutAHomePageOrWithOneThatIsNotHttps) {
    open({.feedUrl = feedUrl, .homePage = "", .currentVersion = "1.9"});
    EXPECT_TRUE(checker->canCheck());
    EXPECT_EQ(openedByDownload(), Addresses{});
    open({.feedUrl = feedUrl, .homePage = "http://corvane.example/", .currentVersion = "1.9"});
    EXPECT_EQ(openedByDownload(), Addresses{});
}

TEST_F(UpdateCheckerTest, SaysSoWhenItsVersionIsUnknown) {
    open({});
    EXPECT_EQ(checker->currentVersion(), "?");
    EXPECT_EQ(checker->property("currentVersion"), "?");
}

TEST_F(UpdateCheckerTest, AnnouncesChangesAndOnlyThem) {
    SignalCount versionChanges(*checker, &UpdateChecker::latestVersionChanged);
    SignalCount urlChanges(*checker, &UpdateChecker::downloadURLChanged);
    SignalCount notesChanges(*checker, &UpdateChecker::releaseNotesChanged);
    check(wholeFeed);
    EXPECT_EQ(versionChanges.take(), 1);
    EXPECT_EQ(urlChanges.take(), 1);
    EXPECT_EQ(notesChanges.take(), 1);
    check(wholeFeed);
    EXPECT_EQ(versionChanges.take() + urlChanges.take() + notesChanges.take(), 0);
    check(R"({"shortVersion":"1.10","url":"https://corvane.example/get"})");
    EXPECT_EQ(versionChanges.take() + urlChanges.take(), 0);
    EXPECT_EQ(notesChanges.take(), 1);
}

/// Answers when it is told to.
class HeldHttpsClient final : public HttpsClient {
public:
    void get(const Request& /*request*/, Done done) override { held.push_back(std::move(done)); }

    std::vector<Done> held;
};

TEST_F(UpdateCheckerTest, TakesTheLastAnswerOfSeveralChecksUnderWay) {
    HeldHttpsClient slow;
    UpdateChecker busy({slow, opener}, {.feedUrl = feedUrl, .homePage = homePage, .currentVersion = "1.9"});
    busy.check();
    busy.check();
    ASSERT_EQ(slow.held.size(), 2U);
    slow.held[1](R"({"shortVersion":"2.0"})");
    EXPECT_EQ(busy.latestVersion(), "2.0");
    slow.held[0](R"({"shortVersion":"1.10"})");
    EXPECT_EQ(busy.latestVersion(), "1.10");
}

TEST_F(UpdateCheckerTest, CopesWithAnAnswerThatComesAfterItsEnd) {
    HeldHttpsClient slow;
    {
        UpdateChecker gone({slow, opener},
                           {.feedUrl = feedUrl, .homePage = homePage, .currentVersion = "1.9"});
        gone.check();
    }
    ASSERT_EQ(slow.held.size(), 1U);
    slow.held[0](wholeFeed);
    EXPECT_TRUE(opener.opened().empty());
}

TEST(BuildInfoTest, KnowsTheVersionAndOnlyHttpsAddresses) {
    EXPECT_STRNE(BuildInfo::version, "");
    for (const std::string_view address :
         {std::string_view(BuildInfo::updateFeed), std::string_view(BuildInfo::homePage)}) {
        EXPECT_TRUE(address.empty() || address.starts_with("https://")) << address;
    }
}

}  // namespace
}  // namespace corvane
