#include <gtest/gtest.h>

#include "app/fan/median.h"

namespace corvane {
namespace {

TEST(Median, IsNoneWithoutValues) {
    EXPECT_EQ(median({}), std::nullopt);
}

TEST(Median, IsTheOneValue) {
    EXPECT_EQ(median({61.5}), 61.5);
}

TEST(Median, IsTheMiddleOfAnOddCountInOrder) {
    EXPECT_EQ(median({90, 10, 50}), 50);
    EXPECT_EQ(median({3, 1, 2, 5, 4}), 3);
}

TEST(Median, IsTheMeanOfTheTwoMiddlesOfAnEvenCount) {
    EXPECT_EQ(median({60, 70}), 65);
    EXPECT_EQ(median({100, 1, 4, 3}), 3.5);
}

TEST(Median, IsNotMovedByOneSpike) {
    std::vector<double> values(14, 60.0);
    values.push_back(100);
    EXPECT_EQ(median(values), 60);
}

}  // namespace
}  // namespace corvane
