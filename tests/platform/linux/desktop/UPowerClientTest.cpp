#include <limits>

#include <asio/post.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/desktop/UPowerClient.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/FakeUPower.h"
#include "tests/support/PrivateBus.h"

namespace corvane {
namespace {

using Batteries = UPowerClient::Batteries;
using Published = std::optional<Batteries>;
using std::chrono::milliseconds;

const PowerSourceDescription halfFull{
    .currentCapacity = 28'500, .maxCapacity = 50'000, .state = "Battery Power", .isCharging = false};

/// A private bus stands in for the system's, the test's own thread for the bus thread.
class UPowerClientTest : public testing::Test {
protected:
    void SetUp() override {
        if (bus.problem()) {
            GTEST_SKIP() << *bus.problem();
        }
        upower.emplace(bus.address());
    }

    void TearDown() override {
        client.reset();
        upower.reset();
    }

    void start(UPowerPatience patience = {}) {
        client = std::make_unique<UPowerClient>(
            context, patience, [this](Published batteries) { published.push_back(std::move(batteries)); });
        client->start();
    }

    /// False when that did not happen in the time a test waits.
    bool runUntil(const std::function<bool()>& isDone) {
        const auto end = std::chrono::steady_clock::now() + testPatience;
        while (!isDone() && std::chrono::steady_clock::now() < end) {
            context.restart();
            context.run_one_for(milliseconds(100));
        }
        return isDone();
    }

    /// Whether this is what is published, sooner or later.
    bool becomes(const Published& expected) {
        return runUntil([&] { return !published.empty() && published.back() == expected; });
    }

    /// What a computer with just this battery is told.
    PowerSourceDescription readingOf(const FakeUPower::Properties& battery) {
        upower->add("battery_BAT0", battery);
        upower->comeUp();
        start();
        EXPECT_TRUE(runUntil([&] { return !published.empty(); }));
        const Published last = published.empty() ? std::nullopt : published.back();
        EXPECT_EQ(last.value_or(Batteries()).size(), 1U);
        return last && last->size() == 1 ? last->front() : PowerSourceDescription();
    }

    PrivateBus bus;
    const EnvironmentVariable systemBus{"DBUS_SYSTEM_BUS_ADDRESS", bus.address().c_str()};
    std::optional<FakeUPower> upower;
    asio::io_context context{1};
    std::vector<Published> published;
    std::unique_ptr<UPowerClient> client;
};

TEST_F(UPowerClientTest, TellsOfABatteryInUse) {
    EXPECT_EQ(readingOf(FakeUPower::battery()), halfFull);
}

TEST_F(UPowerClientTest, KnowsABatteryThatIsCharged) {
    upower->setOnBattery(false);
    const PowerSourceDescription charging = readingOf(FakeUPower::battery("State", std::uint32_t{1}));
    EXPECT_EQ(charging.state, PowerSources::acPower);
    EXPECT_EQ(charging.isCharging, true);
}

TEST_F(UPowerClientTest, TellsThePercentageOfABatteryThatTellsNoEnergy) {
    FakeUPower::Properties battery = FakeUPower::battery("Percentage", 37.5);
    battery["Energy"] = 0.0;
    battery["EnergyFull"] = 0.0;
    const PowerSourceDescription described = readingOf(battery);
    EXPECT_EQ(described.currentCapacity, 37'500);
    EXPECT_EQ(described.maxCapacity, 100'000);
}

TEST_F(UPowerClientTest, PassesOverEnergiesThatCannotBe) {
    constexpr double infinite = std::numeric_limits<double>::infinity();
    upower->add("battery_BAT0", FakeUPower::battery());
    upower->comeUp();
    start();
    ASSERT_TRUE(becomes(Batteries{halfFull}));
    PowerSourceDescription byPercentage = halfFull;
    byPercentage.currentCapacity = 57'000;
    byPercentage.maxCapacity = 100'000;
    for (const double energy : {-1.0, 100.1, 1e300, infinite, -infinite, std::nan("")}) {
        upower->change("battery_BAT0", "Energy", energy);
        EXPECT_TRUE(becomes(Batteries{byPercentage})) << energy;
        upower->change("battery_BAT0", "Energy", 28.5);
        EXPECT_TRUE(becomes(Batteries{halfFull}));
    }
    for (const double full : {0.0, -50.0, 0.0004, 1e300, infinite, std::nan("")}) {
        upower->change("battery_BAT0", "EnergyFull", full);
        EXPECT_TRUE(becomes(Batteries{byPercentage})) << full;
        upower->change("battery_BAT0", "EnergyFull", 50.0);
        EXPECT_TRUE(becomes(Batteries{halfFull}));
    }
}

TEST_F(UPowerClientTest, LeavesOutWhatIsOfAnotherType) {
    FakeUPower::Properties battery = FakeUPower::battery("Energy", std::string("28.5"));
    battery["Percentage"] = std::uint32_t{57};
    battery["State"] = 1.0;
    EXPECT_EQ(readingOf(battery), (PowerSourceDescription{.currentCapacity = std::nullopt,
                                                          .maxCapacity = std::nullopt,
                                                          .state = "Battery Power",
                                                          .isCharging = std::nullopt}));
}

TEST_F(UPowerClientTest, LeavesOutWhatIsNoBatteryOfTheComputer) {
    upower->add("line_power_AC", FakeUPower::battery("Type", std::uint32_t{1}));
    upower->add("ups_hiddev0", FakeUPower::battery("Type", std::uint32_t{3}));
    upower->add("mouse_hidpp_battery_0", FakeUPower::battery("PowerSupply", false));
    upower->add("battery_BAT1", FakeUPower::battery("IsPresent", false));
    upower->add("battery_BAT2", {{"PowerSupply", true}});
    upower->add("battery_BAT3", FakeUPower::battery("Type", std::string("battery")));
    EXPECT_EQ(readingOf(FakeUPower::battery()), halfFull);
}

TEST_F(UPowerClientTest, LeavesOutADeviceThatDoesNotAnswer) {
    upower->add("battery_BAT1", FakeUPower::battery());
    upower->loseObject("battery_BAT1");
    EXPECT_EQ(readingOf(FakeUPower::battery()), halfFull);
}

TEST_F(UPowerClientTest, TellsOfBatteriesInTheOrderOfTheirNames) {
    upower->add("battery_BAT1", FakeUPower::battery("Energy", 10.0));
    upower->add("battery_BAT0", FakeUPower::battery("Energy", 5.0));
    upower->comeUp();
    start();
    ASSERT_TRUE(runUntil([&] { return !published.empty(); }));
    ASSERT_EQ(published.back().value().size(), 2U);
    EXPECT_EQ(published.back()->front().currentCapacity, 5'000);
}

TEST_F(UPowerClientTest, FollowsEveryChange) {
    upower->add("battery_BAT0", FakeUPower::battery());
    upower->comeUp();
    start();
    ASSERT_TRUE(becomes(Batteries{halfFull}));
    PowerSourceDescription expected = halfFull;

    upower->change("battery_BAT0", "Energy", 28.4);
    expected.currentCapacity = 28'400;
    EXPECT_TRUE(becomes(Batteries{expected}));

    upower->setOnBattery(false);
    expected.state = PowerSources::acPower;
    EXPECT_TRUE(becomes(Batteries{expected}));

    upower->add("battery_BAT1", FakeUPower::battery("Energy", 28.4));
    EXPECT_TRUE(becomes(Batteries{expected, expected}));

    upower->remove("battery_BAT0");
    EXPECT_TRUE(becomes(Batteries{expected}));

    upower->remove("battery_BAT1");
    EXPECT_TRUE(becomes(Batteries{}));
}

TEST_F(UPowerClientTest, KnowsTheEndOfManyChanges) {
    upower->add("battery_BAT0", FakeUPower::battery());
    upower->comeUp();
    start();
    for (int percent = 0; percent <= 100; ++percent) {
        upower->change("battery_BAT0", "Energy", percent / 2.0);
    }
    PowerSourceDescription full = halfFull;
    full.currentCapacity = 50'000;
    EXPECT_TRUE(becomes(Batteries{full}));
}

TEST_F(UPowerClientTest, KnowsNothingWithoutUPowerUntilItComesUp) {
    start();
    ASSERT_TRUE(becomes(std::nullopt));
    upower->add("battery_BAT0", FakeUPower::battery());
    upower->comeUp();
    EXPECT_TRUE(becomes(Batteries{halfFull}));
}

TEST_F(UPowerClientTest, KnowsNothingWhenUPowerIsGoneUntilItComesUpAnew) {
    upower->add("battery_BAT0", FakeUPower::battery());
    upower->comeUp();
    start();
    ASSERT_TRUE(becomes(Batteries{halfFull}));
    upower.reset();
    EXPECT_TRUE(becomes(std::nullopt));
    upower.emplace(bus.address());
    upower->add("battery_BAT0", FakeUPower::battery("Energy", 10.0));
    upower->comeUp();
    PowerSourceDescription expected = halfFull;
    expected.currentCapacity = 10'000;
    EXPECT_TRUE(becomes(Batteries{expected}));
}

TEST_F(UPowerClientTest, KnowsNothingOfAHungUPowerUntilItHasNews) {
    upower->add("battery_BAT0", FakeUPower::battery());
    upower->setHanging(true);
    upower->comeUp();
    start({.answers = milliseconds(50)});
    ASSERT_TRUE(becomes(std::nullopt));
    EXPECT_EQ(upower->enumerations().size(), 1U);
    upower->setHanging(false);
    upower->change("battery_BAT0", "Energy", 28.5);
    EXPECT_TRUE(becomes(Batteries{halfFull}));
}

TEST_F(UPowerClientTest, NoticesThatAQuietUPowerHangs) {
    upower->add("battery_BAT0", FakeUPower::battery());
    upower->comeUp();
    start({.answers = milliseconds(50), .news = milliseconds(50)});
    ASSERT_TRUE(becomes(Batteries{halfFull}));
    ASSERT_TRUE(runUntil([&] { return upower->enumerations().size() >= 3; })) << "it is read again and again";
    upower->setHanging(true);
    EXPECT_TRUE(becomes(std::nullopt));
}

/// A UPower whose answers are of other types.
class NonsenseUPower {
public:
    explicit NonsenseUPower(const std::string& bus) : connection_(HelperBus{bus}.connect()) {
        object_ = sdbus::createObject(*connection_, "/org/freedesktop/UPower");
        object_->registerMethod("EnumerateDevices").onInterface("org.freedesktop.UPower").implementedAs([] {
            return std::string("none");
        });
        object_->registerProperty("OnBattery").onInterface("org.freedesktop.UPower").withGetter([] {
            return std::string("maybe");
        });
        object_->finishRegistration();
        connection_->requestName("org.freedesktop.UPower");
        connection_->enterEventLoopAsync();
    }

private:
    std::unique_ptr<sdbus::IConnection> connection_;
    std::unique_ptr<sdbus::IObject> object_;
};

TEST_F(UPowerClientTest, KnowsNothingFromAUPowerThatTalksNonsense) {
    const NonsenseUPower nonsense(bus.address());
    start();
    EXPECT_TRUE(becomes(std::nullopt));
}

TEST_F(UPowerClientTest, KnowsNothingWithoutABus) {
    const EnvironmentVariable none("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/no/such/bus");
    start();
    EXPECT_EQ(published, std::vector<Published>{std::nullopt});
}

TEST_F(UPowerClientTest, KnowsNothingWhenTheBusHasGoneAway) {
    upower->add("battery_BAT0", FakeUPower::battery());
    upower->comeUp();
    start();
    ASSERT_TRUE(becomes(Batteries{halfFull}));
    upower.reset();
    bus.end();
    EXPECT_TRUE(becomes(std::nullopt));
}

TEST_F(UPowerClientTest, FindsUPowerAgainWhenTheBusIsBack) {
    const EnvironmentVariable place("DBUS_SYSTEM_BUS_ADDRESS", bus.place().c_str());
    upower->add("battery_BAT0", FakeUPower::battery());
    upower->comeUp();
    start({.retry = milliseconds(10)});
    ASSERT_TRUE(becomes(Batteries{halfFull}));
    for (int times = 0; times < 2; ++times) {
        upower.reset();
        bus.end();
        ASSERT_TRUE(becomes(std::nullopt));
        bus.startAgain();
        ASSERT_EQ(bus.problem(), std::nullopt);
        upower.emplace(bus.address());
        upower->add("battery_BAT0", FakeUPower::battery());
        upower->comeUp();
        EXPECT_TRUE(becomes(Batteries{halfFull}));
    }
}

TEST_F(UPowerClientTest, WaitsForABusThatIsNotThereYet) {
    const EnvironmentVariable place("DBUS_SYSTEM_BUS_ADDRESS", bus.place().c_str());
    upower.reset();
    bus.end();
    start({.retry = milliseconds(10)});
    ASSERT_TRUE(becomes(std::nullopt));
    bus.startAgain();
    upower.emplace(bus.address());
    upower->add("battery_BAT0", FakeUPower::battery());
    upower->comeUp();
    EXPECT_TRUE(becomes(Batteries{halfFull}));
}

TEST_F(UPowerClientTest, TellsNothingMoreOnceItIsGone) {
    upower->setHanging(true);
    upower->comeUp();
    start({.answers = milliseconds(0)});
    ASSERT_TRUE(upower->enumerations().waitFor(1));
    // The end of the reading is due, and waits for its turn.
    client.reset();
    context.restart();
    context.poll();
    EXPECT_THAT(published, testing::IsEmpty());
}

}  // namespace
}  // namespace corvane
