#include <array>
#include <cmath>
#include <limits>
#include <random>

#include "tests/helper/HelperMachine.h"
#include "tests/helper/LoopOracle.h"

namespace corvane {
namespace {

constexpr std::array<std::string_view, 3> sensors{"Te05", "Tg0f", "Tp09"};
constexpr std::array<std::string_view, 2> modeKeys{"F0Md", "F1Md"};

MacModel campaignMac() {
    MacModel model = twoFanMac();
    model.sensors.clear();
    for (const std::string_view key : sensors) {
        model.sensors.push_back(sensor::fixed(key, 60.0F));
    }
    return model;
}

/// A helper that lives through random requests, heat and faults. What is wrong with the machine changes
/// between the steps only, so that every write of a step can be checked against one state of the machine.
class Campaign {
public:
    explicit Campaign(std::uint64_t seed)
        : random_(seed), machine_(campaignMac()), oracle_(campaignMac().fans) {
        machine_.startAt(60.0F);
        readings_.fill(60.0F);
        lastContact_ = machine_.now();
    }

    void step() {
        if (oneIn(3)) {
            changeHeat();
        }
        if (oneIn(6)) {
            changeFaults();
        }
        tellOracle();
        machine_.forget();
        const bool wasBoosted = oracle_.isBoosted();
        const bool wasAsked = oneIn(2);
        if (wasAsked) {
            ask();
        }
        checkWrites();
        const bool isBoostedNow = oracle_.isBoosted();
        const Duration time = 10ms * pick(300);
        machine_.advance(time);
        checkWrites();

        if (isBoostedNow && oracle_.isBoosted() && time >= 400ms) {
            EXPECT_FALSE(machine_.timesOf("Ftst=1").empty()) << "the loop stands";
        }
        if (!wasBoosted && !wasAsked) {
            EXPECT_TRUE(machine_.writes.empty()) << machine_.writes.front().text << " out of nothing";
        }
        checkFans();
        checkSilence();
        emergencies_ += static_cast<int>(machine_.log.count("CRITICAL") + machine_.log.count("lost all") +
                                         machine_.log.count("WATCHDOG — app silent, releasing"));
    }

    [[nodiscard]] int boosts() const { return boosts_; }
    [[nodiscard]] int emergencies() const { return emergencies_; }

private:
    std::uint64_t pick(std::uint64_t count) { return random_() % count; }
    bool oneIn(std::uint64_t count) { return pick(count) == 0; }

    void changeHeat() {
        constexpr std::array broken{std::numeric_limits<float>::quiet_NaN(),
                                    std::numeric_limits<float>::infinity(), 0.0F, 200.0F};
        const std::size_t which = pick(sensors.size());
        float celsius = 45.0F + static_cast<float>(pick(500)) / 10.0F;
        if (oneIn(6)) {
            celsius = broken.at(pick(broken.size()));
        } else if (oneIn(6)) {
            celsius = 98.0F + static_cast<float>(pick(31));
        }
        readings_.at(which) = celsius;
        machine_.mac.holdSensor(sensors.at(which), celsius);
    }

    void changeFaults() {
        if (oneIn(2)) {
            machine_.mac.clearFaults();
            isReadable_.fill(true);
            isFanBroken_ = false;
        } else if (oneIn(2)) {
            const std::size_t which = pick(sensors.size());
            isReadable_.at(which) = false;
            machine_.mac.setFault(sensors.at(which), oneIn(2) ? KeyFault::readFails() : KeyFault::vanished());
        } else {
            breakFan();
        }
    }

    void breakFan() {
        isFanBroken_ = true;
        mayBeUnheld_ = true;
        const std::string_view mode = modeKeys.at(pick(modeKeys.size()));
        switch (pick(5)) {
            case 0:
                machine_.mac.setFault(mode, KeyFault::neverAutomatic(1));
                break;
            case 1:
                machine_.mac.setFault(mode, KeyFault::writeRefused());
                break;
            case 2:
                machine_.mac.setFault(mode, KeyFault::readFails());
                break;
            case 3:
                machine_.mac.setFault("F1Tg", KeyFault::writeRefused());
                break;
            default:
                machine_.mac.setFault("Ftst", KeyFault::writeRefused());
                break;
        }
    }

    void tellOracle() {
        oracle_.readings.clear();
        for (std::size_t i = 0; i < sensors.size(); ++i) {
            if (isReadable_.at(i) && std::isfinite(readings_.at(i))) {
                oracle_.readings.push_back(static_cast<double>(readings_.at(i)));
            }
        }
    }

    void ask() {
        lastContact_ = machine_.now();
        switch (pick(8)) {
            case 0:
            case 1:
            case 2:
                askForFloor();
                break;
            case 3:
                machine_.stopBoost();
                break;
            case 4:
                machine_.setLid(oneIn(2));
                break;
            case 5:
                machine_.ping();
                break;
            default:
                EXPECT_EQ(machine_.isBoosted(), oracle_.isBoosted());
                break;
        }
        lastContact_ = std::max(lastContact_, machine_.now() - 600ms);
    }

    void askForFloor() {
        const double percent = oneIn(8) ? std::numeric_limits<double>::quiet_NaN()
                                        : static_cast<double>(pick(1300)) / 10.0 - 10.0;
        if (percent > 0.0) {
            oracle_.begin();
            oracle_.floor = std::min(percent, 100.0);
            ++boosts_;
        }
        machine_.setFloor(percent);
    }

    /// Everything written since it was last called.
    void checkWrites() {
        for (; checkedWrites_ < machine_.writes.size(); ++checkedWrites_) {
            const std::string& write = machine_.writes[checkedWrites_].text;
            if (write == "Ftst=0") {
                mayBeForced_ = isFanBroken_;
            }
            oracle_.expect(write);
        }
    }

    void checkFans() {
        checkedWrites_ = 0;
        if (!oracle_.isBoosted()) {
            mayBeUnheld_ = isFanBroken_;
            EXPECT_TRUE(mayBeForced_ || !machine_.mac.isAnyFanForced()) << "a fan is left forced";
            return;
        }
        for (std::size_t fan = 0; fan < 2 && !mayBeUnheld_; ++fan) {
            EXPECT_TRUE(machine_.mac.isFanForced(fan));
            EXPECT_GE(machine_.mac.fanTarget(fan), static_cast<double>(oracle_.leastTarget(fan)));
        }
    }

    void checkSilence() {
        if (machine_.now() - lastContact_ > 8600ms) {
            EXPECT_FALSE(oracle_.isBoosted()) << "held without an application";
            EXPECT_FALSE(machine_.sleepSetting.isSleepDisabled());
        }
    }

    std::mt19937_64 random_;
    HelperMachine machine_;
    LoopOracle oracle_;
    std::array<float, sensors.size()> readings_{};
    std::array<bool, sensors.size()> isReadable_{true, true, true};
    bool isFanBroken_ = false;
    /// A fan was broken during the last release.
    bool mayBeForced_ = false;
    /// A fan was broken at some time during this boost.
    bool mayBeUnheld_ = false;
    Duration lastContact_{};
    std::size_t checkedWrites_ = 0;
    int boosts_ = 0;
    int emergencies_ = 0;
};

class HelperCampaign : public testing::TestWithParam<std::uint64_t> {};

TEST_P(HelperCampaign, NeverCoolsLessThanItMayNorHoldsWhatItMustRelease) {
    Campaign campaign(GetParam());
    for (int step = 0; step < 2000 && !HasFailure(); ++step) {
        SCOPED_TRACE(fmt::format("step {}", step));
        campaign.step();
    }
    EXPECT_GT(campaign.boosts(), 100);
    EXPECT_GT(campaign.emergencies(), 50);
}

INSTANTIATE_TEST_SUITE_P(Seeds, HelperCampaign, testing::Range<std::uint64_t>(1, 13));

}  // namespace
}  // namespace corvane
