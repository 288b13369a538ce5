#include <cstdint>
#include <optional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/desktop/SteadyActivity.h"
#include "tests/platform/macos/fakes/Foundation/FakeActivities.h"

namespace corvane {
namespace {

TEST(SteadyActivity, LastsAsLongAsTheObjectAndLetsTheComputerSleep) {
    const FakeActivities system;
    std::optional<SteadyActivity> activity(std::in_place);
    EXPECT_EQ(system.underWay(), 1);
    ASSERT_EQ(system.begun().size(), 1U);
    constexpr std::uint64_t background = 0xFF;
    constexpr std::uint64_t idleSleepDisabled = std::uint64_t{1} << 20U;
    EXPECT_GT(system.begun().front(), background);
    EXPECT_EQ(system.begun().front() & idleSleepDisabled, 0U);
    activity.reset();
    EXPECT_EQ(system.underWay(), 0);
}

}  // namespace
}  // namespace corvane
