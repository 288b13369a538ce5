#include <initializer_list>

#include <gtest/gtest.h>

#include "helper/SafetyTempHistory.h"

namespace corvane {
namespace {

double medianOf(std::initializer_list<double> readings) {
    SafetyTempHistory history;
    for (const double reading : readings) {
        history.append(reading);
    }
    return history.median();
}

TEST(SafetyTempHistory, VotesASingleSpikeDown) {
    EXPECT_EQ(medianOf({70, 71, 70, 98, 71}), 71);
}

TEST(SafetyTempHistory, TakesTheUpperMiddleOfAnEvenCount) {
    EXPECT_EQ(medianOf({60}), 60);
    EXPECT_EQ(medianOf({60, 90}), 90);
    EXPECT_EQ(medianOf({90, 60}), 90);
    EXPECT_EQ(medianOf({60, 90, 70}), 70);
    EXPECT_EQ(medianOf({60, 90, 70, 80}), 80);
}

TEST(SafetyTempHistory, KeepsTheLastFive) {
    EXPECT_EQ(medianOf({100, 100, 100, 10, 20, 30}), 30);
    EXPECT_EQ(medianOf({100, 100, 100, 10, 20, 30, 40, 50}), 30);
}

TEST(SafetyTempHistory, ForgetsEverythingWhenCleared) {
    SafetyTempHistory history;
    for (const double reading : {90.0, 91.0, 92.0, 93.0, 94.0}) {
        history.append(reading);
    }
    history.clear();
    history.append(50.0);
    EXPECT_EQ(history.median(), 50.0);
}

}  // namespace
}  // namespace corvane
