#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "platform/simulated/SimulatedFan.h"

namespace corvane {

/// Says, write by write, what the helper may do to its fans, from what the sensors show and the floor asks.
/// Written from the rules alone; it shares nothing with the helper.
class LoopOracle {
public:
    explicit LoopOracle(std::vector<FanLimits> fans) : fans_(std::move(fans)) {}

    /// What holds from now on: the readings of all sensors that can be read, and the floor last asked for.
    std::vector<double> readings;
    double floor = 0.0;

    /// The helper holds the fans.
    [[nodiscard]] bool isBoosted() const { return boosted_; }
    [[nodiscard]] int ticks() const { return ticks_; }
    void begin() { boosted_ = true; }

    /// Checks the next write.
    void expect(const std::string& write) {
        if (write == "Ftst=1") {
            ASSERT_TRUE(boosted_) << "a tick without a boost";
            beginTick();
        } else if (write == "Ftst=0") {
            end();
        } else if (write.substr(2) == "Md=1") {
            ASSERT_TRUE(boosted_ && percent_) << write << " although the fans must be released";
        } else if (write.substr(2) != "Md=0" && write.substr(2) != "Tg=0") {
            expectTarget(write);
        }
    }

    /// The smallest target that the last tick may have set.
    [[nodiscard]] float leastTarget(std::size_t fan) const {
        const FanLimits& limits = fans_.at(fan);
        const auto range = static_cast<double>(limits.maximum - limits.minimum);
        return limits.minimum + static_cast<float>(percent_.value_or(0.0) * range / 100.0) - 1.0F;
    }

private:
    void beginTick() {
        ++ticks_;
        if (ticks_ % 2 == 1) {
            refreshTemperature();
        }
        percent_.reset();
        if (temperature_ && *temperature_ < 100.0) {
            percent_ = std::max(floor, std::clamp((*temperature_ - 72.0) / 23.0 * 100.0, 0.0, 100.0));
        }
    }

    void refreshTemperature() {
        temperature_.reset();
        std::optional<double> hottest;
        for (const double reading : readings) {
            if (reading > 5.0 && reading < 130.0) {
                hottest = std::max(hottest.value_or(reading), reading);
            }
        }
        if (!hottest) {
            return;
        }
        history_.push_back(*hottest);
        if (history_.size() > 5) {
            history_.erase(history_.begin());
        }
        std::vector<double> sorted = history_;
        std::ranges::sort(sorted);
        temperature_ = sorted[sorted.size() / 2];
    }

    void expectTarget(const std::string& write) {
        ASSERT_TRUE(boosted_ && percent_) << write << " although the fans must be released";
        const auto fan = static_cast<std::size_t>(write.at(1) - '0');
        const float target = std::stof(write.substr(5));
        EXPECT_GE(target, fans_.at(fan).minimum) << write;
        EXPECT_LE(target, fans_.at(fan).maximum) << write;
        EXPECT_GE(target, leastTarget(fan)) << write;
        EXPECT_LE(target, leastTarget(fan) + 2.0F) << write;
    }

    void end() {
        boosted_ = false;
        ticks_ = 0;
        history_.clear();
        temperature_.reset();
        percent_.reset();
    }

    std::vector<FanLimits> fans_;
    bool boosted_ = false;
    int ticks_ = 0;
    std::vector<double> history_;
    std::optional<double> temperature_;
    /// None when the fans must be released instead.
    std::optional<double> percent_;
};

}  // namespace corvane
