#include <thread>
#include <vector>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "platform/RequestLimiter.h"

namespace corvane {
namespace {

class RequestLimiterTest : public testing::Test {
protected:
    /// How many of `attempts` requests of `caller` find a place, which they keep.
    std::size_t admit(const std::string& caller, std::size_t attempts) {
        std::size_t admitted = 0;
        for (std::size_t i = 0; i < attempts; ++i) {
            if (auto place = limiter->admit(caller)) {
                places.push_back(std::move(place));
                ++admitted;
            }
        }
        return admitted;
    }

    std::shared_ptr<RequestLimiter> limiter = std::make_shared<RequestLimiter>();
    std::vector<RequestLimiter::Place> places;
};

TEST_F(RequestLimiterTest, GivesACallerSixtyFourPlaces) {
    EXPECT_EQ(admit(":1.1", 100), 64U);
    EXPECT_EQ(admit(":1.2", 100), 64U) << "one caller does not use up another's places";
}

TEST_F(RequestLimiterTest, GivesAPlaceBackWhenItsLastHolderIsGone) {
    admit(":1.1", RequestLimiter::maxWaitingPerCaller);
    const RequestLimiter::Place copy = places.back();
    places.pop_back();
    EXPECT_EQ(admit(":1.1", 1), 0U) << "a copy still holds the place";
    places.pop_back();
    EXPECT_EQ(admit(":1.1", 2), 1U);
}

TEST_F(RequestLimiterTest, GivesAllCallersTogether2048Places) {
    std::size_t admitted = 0;
    for (int caller = 0; caller < 3000; ++caller) {
        admitted += admit(fmt::format(":1.{}", caller), 1);
    }
    EXPECT_EQ(admitted, 2048U);
    places.clear();
    EXPECT_EQ(admit(":1.5000", 1), 1U);
}

TEST_F(RequestLimiterTest, RefusesWithoutRememberingTheRefused) {
    for (int caller = 0; caller < 32; ++caller) {
        admit(fmt::format(":1.{}", caller), RequestLimiter::maxWaitingPerCaller);
    }
    EXPECT_EQ(admit(":1.99", 1000), 0U);
    places.clear();
    EXPECT_EQ(admit(":1.99", 100), 64U);
}

TEST_F(RequestLimiterTest, LivesAsLongAsItsPlaces) {
    admit(":1.1", 1);
    const std::weak_ptr<RequestLimiter> watched = limiter;
    limiter.reset();
    EXPECT_FALSE(watched.expired());
    places.clear();
    EXPECT_TRUE(watched.expired());
}

TEST_F(RequestLimiterTest, KeepsCountWhenSeveralThreadsComeAndGo) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([this] {
            for (int round = 0; round < 1000; ++round) {
                const auto first = limiter->admit(":1.1");
                const auto second = limiter->admit(":1.2");
                EXPECT_TRUE(first && second);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(admit(":1.1", 100), 64U);
    EXPECT_EQ(admit(":1.2", 100), 64U);
}

}  // namespace
}  // namespace corvane
