#include <string>
#include <tuple>

#include <gtest/gtest.h>

#include "tests/app/fan/SoakLife.h"

namespace corvane {
namespace {

/// Model and seed.
class FanSoak : public testing::TestWithParam<std::tuple<std::string, std::uint64_t>> {
protected:
    static MacModel model(std::string_view name) { return name == "tiny" ? tinyMac() : *findMacModel(name); }
};

TEST_P(FanSoak, ForcesNothingUnwantedNothingTooSlowAndNothingAtCriticalHeatForADay) {
    const auto& [name, seed] = GetParam();
    SCOPED_TRACE(fmt::format("{}, seed {}", name, seed));
    SoakLife life(model(name), seed);
    life.live(24 * 3600);
    if (!HasFailure()) {
        life.expectEventful();
        life.expectPeace();
    }
}

INSTANTIATE_TEST_SUITE_P(Machines, FanSoak,
                         testing::Combine(testing::Values(std::string("tiny"), std::string("macbook-pro-13"),
                                                          std::string("macbook-pro-14-m5")),
                                          testing::Range<std::uint64_t>(1, 4)));

}  // namespace
}  // namespace corvane
