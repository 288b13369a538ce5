#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "tests/app/fan/SoakLife.h"

namespace corvane {
namespace {

/// Five minutes, in which something happens every few seconds.
constexpr int secondsAwake = 300;
constexpr SoakPace campaignPace{.heat = 15, .deeds = 4};

std::uint64_t fromEnvironment(const char* name, std::uint64_t otherwise) {
    const char* value = std::getenv(name);
    return value == nullptr ? otherwise : std::strtoull(value, nullptr, 10);
}

/// Every model that has fans, in turn.
MacModel modelFor(std::uint64_t seed) {
    constexpr std::array names{"macbook-pro-16", "macbook-pro-13", "mac-mini", "macbook-pro-14-m4",
                               "macbook-pro-14-m5"};
    return seed % 6 == 5 ? tinyMac() : *findMacModel(names.at(seed % 6));
}

/// CORVANE_CAMPAIGN_FIRST and CORVANE_CAMPAIGN_LIVES: the first seed, and how many; a seed and 1 repeat a
/// life.
TEST(FanCampaign, WhateverHappensToTheMachineItsFansEndWithTheFirmware) {
    const std::uint64_t first = fromEnvironment("CORVANE_CAMPAIGN_FIRST", 1);
    const std::uint64_t lives = fromEnvironment("CORVANE_CAMPAIGN_LIVES", 600);
    ASSERT_GT(lives, 0U);
    int forced = 0;
    int compared = 0;
    for (std::uint64_t seed = first; seed < first + lives && !HasFailure(); ++seed) {
        SCOPED_TRACE(fmt::format("repeat with CORVANE_CAMPAIGN_FIRST={} CORVANE_CAMPAIGN_LIVES=1", seed));
        SoakLife life(modelFor(seed), seed, campaignPace);
        life.live(secondsAwake);
        if (!HasFailure()) {
            life.expectPeace();
        }
        forced += life.forcedSeconds();
        compared += life.comparedSeconds();
    }
    // One life may be a quiet one.
    if (lives >= 100) {
        EXPECT_GT(forced, secondsAwake * static_cast<int>(lives) / 20);
        EXPECT_GT(compared, secondsAwake * static_cast<int>(lives) / 10);
    }
    fmt::print("{} lives of {} s, seeds {} to {}\n", lives, secondsAwake, first, first + lives - 1);
}

}  // namespace
}  // namespace corvane
