#include <compare>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "app/shell/compareVersions.h"

namespace corvane {
namespace {

bool isBefore(std::string_view left, std::string_view right) {
    return std::is_lt(compareVersions(left, right)) && std::is_gt(compareVersions(right, left));
}
bool areEquivalent(std::string_view left, std::string_view right) {
    return std::is_eq(compareVersions(left, right)) && std::is_eq(compareVersions(right, left));
}

TEST(CompareVersions, ComparesRunsOfDigitsAsNumbers) {
    EXPECT_TRUE(isBefore("1.9", "1.10"));
    EXPECT_TRUE(isBefore("1.99", "2.0"));
    EXPECT_TRUE(isBefore("9", "10"));
    EXPECT_TRUE(isBefore("1.2.3", "1.2.4"));
    EXPECT_TRUE(isBefore("0.9", "1"));
}

TEST(CompareVersions, FillsNothingIn) {
    EXPECT_TRUE(isBefore("1.2", "1.2.0"));
    EXPECT_TRUE(isBefore("1", "1."));
    EXPECT_TRUE(isBefore("", "0"));
    EXPECT_TRUE(isBefore("1.0", "1.0-beta")) << "a suffix has no meaning";
}

TEST(CompareVersions, FindsEqualVersionsEquivalent) {
    EXPECT_TRUE(areEquivalent("1.2", "1.2"));
    EXPECT_TRUE(areEquivalent("", ""));
    EXPECT_TRUE(areEquivalent("?", "?"));
}

TEST(CompareVersions, PaysNoRegardToLeadingZeros) {
    EXPECT_TRUE(areEquivalent("1.02", "1.2"));
    EXPECT_TRUE(areEquivalent("1.0", "1.000"));
    EXPECT_TRUE(isBefore("1.02", "1.3"));
    EXPECT_TRUE(isBefore("1.009", "1.10"));
    EXPECT_TRUE(isBefore("0.00", "0.00a"));
}

TEST(CompareVersions, CopesWithNumbersOfAnyLength) {
    const std::string nines(100'000, '9');
    const std::string zeros(100'000, '0');
    EXPECT_TRUE(isBefore("18446744073709551615", "18446744073709551616"));
    EXPECT_TRUE(isBefore("1." + nines, "1.1" + zeros));
    EXPECT_TRUE(isBefore(nines, nines + ".1"));
    EXPECT_TRUE(areEquivalent(zeros + "7", "7"));
}

TEST(CompareVersions, ComparesEverythingElseByCharacter) {
    EXPECT_TRUE(isBefore("1.2a", "1.2b"));
    EXPECT_TRUE(isBefore("1.2B", "1.2a")) << "upper and lower case differ";
    EXPECT_TRUE(isBefore("1-2", "1.2"));
    EXPECT_TRUE(isBefore("1.0", "1.a"));
    EXPECT_TRUE(isBefore("1. 5", "1.4")) << "a blank is a character";
    EXPECT_TRUE(isBefore("1.z", "1.ä"));
    EXPECT_TRUE(isBefore("1.\uffff", "1.💾"));
    EXPECT_TRUE(isBefore("v1", "v2"));
    EXPECT_TRUE(isBefore("2", "v1"));
}

TEST(CompareVersions, TakesDigitsOfOtherScriptsForCharacters) {
    EXPECT_TRUE(isBefore("1.٢", "1.٣"));
    EXPECT_TRUE(isBefore("1.٣", "1.٣٢"));
    EXPECT_TRUE(isBefore("1.٢٠", "1.٣"));
}

TEST(CompareVersions, PutsVersionsIntoOneOrder) {
    const std::vector<std::string> ascending{"",     ".",   "0.9",  "1",      "1.",   "1.2", "1.2.0",
                                             "1.2a", "1.9", "1.10", "1.10.1", "1.a",  "1.b", "2",
                                             "?",    "v1",  "v1.5", "v10.1",  "v10.2"};
    for (std::size_t left = 0; left < ascending.size(); ++left) {
        for (std::size_t right = left + 1; right < ascending.size(); ++right) {
            EXPECT_TRUE(isBefore(ascending[left], ascending[right]))
                << ascending[left] << ' ' << ascending[right];
        }
    }
}

}  // namespace
}  // namespace corvane
