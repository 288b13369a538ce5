#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/AutoreleasePool.h"
#include "platform/macos/desktop/MacHttpsClient.h"
#include "platform/simulated/VirtualTime.h"
#include "tests/platform/macos/fakes/Foundation/FakeWeb.h"
#include "tests/platform/macos/fakes/dispatch/FakeDispatch.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;
using Body = std::optional<std::string>;

constexpr const char* feed = "https://example.org/appcast.json";

class MacHttpsClientTest : public testing::Test {
protected:
    void get(const std::string& url = feed) {
        client->get({.url = url, .timeout = 10s, .largestBody = 8}, [this](Body body) {
            EXPECT_TRUE(dispatch.isOnMainThread());
            bodies.push_back(std::move(body));
        });
    }
    /// What one request comes to.
    Body fetched(const std::string& url = feed) {
        bodies.clear();
        get(url);
        time.settle();
        EXPECT_EQ(bodies.size(), 1U);
        return bodies.empty() ? std::nullopt : bodies.front();
    }

    VirtualTime time;
    FakeDispatch dispatch{time};
    FakeWeb web;
    /// What the test autoreleases goes before the world does that it lives in.
    AutoreleasePool pool;
    std::unique_ptr<MacHttpsClient> client = std::make_unique<MacHttpsClient>(dispatch.mainQueue());
    std::vector<Body> bodies;
};

TEST_F(MacHttpsClientTest, BringsTheWholeBodyLater) {
    web.set(feed, {.body = {"one", "", "two"}});
    get();
    EXPECT_THAT(bodies, IsEmpty());
    time.settle();
    EXPECT_THAT(bodies, ElementsAre(Body("onetwo")));
    EXPECT_EQ(web.sessions(), 0);
}

TEST_F(MacHttpsClientTest, CountsAnAnswerOfAnyStatusAndWithoutABody) {
    for (const int status : {200, 204, 304, 401, 404, 500}) {
        web.set(feed, {.body = {"body"}, .status = status});
        EXPECT_EQ(fetched(), "body") << status;
    }
    web.set(feed, {});
    EXPECT_EQ(fetched(), "");
}

TEST_F(MacHttpsClientTest, AsksForNothingFromACacheAndSaysNothingOfTheUser) {
    static_cast<void>(fetched());
    ASSERT_EQ(web.requests().size(), 1U);
    const FakeWeb::Request& request = web.requests().front();
    EXPECT_EQ(request.url, feed);
    EXPECT_TRUE(request.ignoresCache);
    EXPECT_FALSE(request.hasCookies);
    EXPECT_EQ(request.timeout, 10.0);
    EXPECT_TRUE(request.isSessionBlank);
    EXPECT_THAT(request.headers,
                UnorderedElementsAre(Pair("User-Agent", "Corvane"), Pair("Accept", "*/*"),
                                     Pair("Accept-Language", "*"), Pair("Accept-Encoding", "identity"),
                                     Pair("Cache-Control", "no-cache")));
}

TEST_F(MacHttpsClientTest, HasNothingWhenTheConnectionBreaks) {
    EXPECT_EQ(fetched(), std::nullopt);
    web.set(feed, {.body = {"half"}, .breaks = true});
    EXPECT_EQ(fetched(), std::nullopt);
}

TEST_F(MacHttpsClientTest, HasNothingWhenLessCameThanWasAnnounced) {
    web.set(feed, {.body = {"half"}, .announcedLength = 8});
    EXPECT_EQ(fetched(), std::nullopt);
    web.set(feed, {.body = {"whole", "..."}, .announcedLength = 8});
    EXPECT_EQ(fetched(), "whole...");
}

TEST_F(MacHttpsClientTest, HasNothingOfWhatIsNoWebServer) {
    web.set(feed, {.body = {"body"}, .isHttp = false});
    EXPECT_EQ(fetched(), std::nullopt);
}

TEST_F(MacHttpsClientTest, TakesNoMoreThanTheLargestBody) {
    web.set(feed, {.body = {"12345", "678"}});
    EXPECT_EQ(fetched(), "12345678");
    web.set(feed, {.body = {"12345", "678", "9"}});
    EXPECT_EQ(fetched(), std::nullopt);
    web.set(feed, {.body = {"123456789"}});
    EXPECT_EQ(fetched(), std::nullopt);
    EXPECT_EQ(web.sessions(), 0);
}

TEST_F(MacHttpsClientTest, FollowsFiveRedirectsAndNoSixth) {
    const auto page = [](int number) { return fmt::format("https://example.org/{}", number); };
    for (int number = 0; number < 6; ++number) {
        web.set(page(number), {.status = 302, .location = page(number + 1)});
    }
    web.set(page(6), {.body = {"body"}});
    EXPECT_EQ(fetched(page(1)), "body");
    EXPECT_EQ(fetched(page(0)), std::nullopt);
}

TEST_F(MacHttpsClientTest, FollowsNoRedirectToWhatIsNotHttps) {
    for (const char* target :
         {"http://example.org/", "file:///etc/passwd", "https://user@example.org/", "ftp://example.org/"}) {
        web.set(target, {.body = {"body"}});
        web.set(feed, {.body = {"moved"}, .status = 302, .location = target});
        EXPECT_EQ(fetched(), std::nullopt) << target;
        EXPECT_EQ(web.asked().back(), feed) << target;
    }
}

TEST_F(MacHttpsClientTest, AsksNobodyForWhatIsNoHttpsAddress) {
    for (const char* url : {"", "http://example.org/", "https://", "https://user@example.org/",
                            "file:///etc/passwd", "https://example.org/two words"}) {
        EXPECT_EQ(fetched(url), std::nullopt) << url;
    }
    EXPECT_THAT(web.requests(), IsEmpty());
}

TEST_F(MacHttpsClientTest, GivesUpWhenTimeIsOver) {
    web.set(feed, {.hangs = true});
    get();
    time.advance(10s - 1ms);
    EXPECT_THAT(bodies, IsEmpty());
    time.advance(1ms);
    EXPECT_THAT(bodies, ElementsAre(Body()));
    EXPECT_EQ(web.sessions(), 0);
}

TEST_F(MacHttpsClientTest, HandlesSeveralRequestsAtATime) {
    web.set(feed, {.body = {"one"}});
    web.set("https://example.org/other", {.hangs = true});
    get();
    get("https://example.org/other");
    get();
    time.advance(1s);
    EXPECT_THAT(bodies, ElementsAre(Body("one"), Body("one")));
    time.advance(1min);
    EXPECT_THAT(bodies, ElementsAre(Body("one"), Body("one"), Body()));
}

TEST_F(MacHttpsClientTest, AnswersNobodyOnceItIsGone) {
    web.set(feed, {.body = {"one"}});
    get();
    get("http://example.org/");
    client.reset();
    time.advance(1min);
    EXPECT_THAT(bodies, IsEmpty());
    EXPECT_EQ(web.sessions(), 0);
}

TEST_F(MacHttpsClientTest, MayEndInAnAnswer) {
    web.set(feed, {.body = {"one"}});
    get();
    client->get({.url = feed, .timeout = 10s, .largestBody = 8}, [this](const Body&) { client.reset(); });
    get();
    time.advance(1min);
    EXPECT_THAT(bodies, ElementsAre(Body("one")));
}

}  // namespace
}  // namespace corvane
