#include <cstdint>
#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/CfRef.h"
#include "platform/macos/desktop/IoKitPowerSources.h"
#include "tests/platform/macos/fakes/IOKit/FakePowerSources.h"

namespace corvane {
namespace {

using testing::IsEmpty;

template <typename... Entry>
CfReference dictionary(Entry&&... entry) {
    CfEntries entries;
    (entries.push_back(std::forward<Entry>(entry)), ...);
    return makeCfObject(std::move(entries));
}

CfEntries::value_type entry(const std::string& key, CfValue value) {
    return {makeCfObject(key), makeCfObject(std::move(value))};
}

template <typename... Element>
CfElements elements(Element&&... element) {
    CfElements all;
    (all.push_back(std::forward<Element>(element)), ...);
    return all;
}

CfReference battery(std::int64_t charge) {
    return dictionary(entry("Type", std::string("InternalBattery")), entry("Current Capacity", charge),
                      entry("Max Capacity", std::int64_t{100}),
                      entry("Power Source State", std::string("Battery Power")), entry("Is Charging", false));
}

class IoKitPowerSourcesTest : public testing::Test {
protected:
    /// Of the one source that there is.
    std::optional<PowerSourceDescription> described(const std::function<CfReference()>& description) {
        system.set([description] { return elements(description()); });
        const auto all = sources.descriptions();
        EXPECT_EQ(all.size(), 1U);
        return all.empty() ? std::nullopt : all.front();
    }

    FakePowerSources system;
    IoKitPowerSources sources;
};

TEST_F(IoKitPowerSourcesTest, SayWhatTheSystemSaysOfABattery) {
    const PowerSourceDescription expected{
        .currentCapacity = 57, .maxCapacity = 100, .state = "Battery Power", .isCharging = false};
    EXPECT_EQ(described([] { return battery(57); }), expected);
}

TEST_F(IoKitPowerSourcesTest, SayWhenTheMainsFeedIt) {
    const auto description = described([] {
        return dictionary(entry("Power Source State", std::string("AC Power")), entry("Is Charging", true));
    });
    ASSERT_TRUE(description);
    EXPECT_EQ(description->state, PowerSources::acPower);
    EXPECT_EQ(description->isCharging, true);
    EXPECT_EQ(description->currentCapacity, std::nullopt);
    EXPECT_EQ(description->maxCapacity, std::nullopt);
}

TEST_F(IoKitPowerSourcesTest, TakeNothingOfAnotherTypeForWhatTheyLookFor) {
    const auto description = described([] {
        return dictionary(entry("Current Capacity", std::string("57")), entry("Max Capacity", true),
                          entry("Power Source State", std::int64_t{1}),
                          entry("Is Charging", std::int64_t{1}));
    });
    EXPECT_EQ(description, PowerSourceDescription{});
}

TEST_F(IoKitPowerSourcesTest, TakeRealsForIntegersOnlyWithoutALoss) {
    const auto description =
        described([] { return dictionary(entry("Current Capacity", 57.0), entry("Max Capacity", 99.5)); });
    ASSERT_TRUE(description);
    EXPECT_EQ(description->currentCapacity, 57);
    EXPECT_EQ(description->maxCapacity, std::nullopt);
}

TEST_F(IoKitPowerSourcesTest, TakeNoNumberThatIsTooLarge) {
    const auto description = described([] { return battery(std::int64_t{1} << 40); });
    ASSERT_TRUE(description);
    EXPECT_EQ(description->currentCapacity, std::nullopt);
    EXPECT_EQ(description->maxCapacity, 100);
}

TEST_F(IoKitPowerSourcesTest, AreInTheSystemsOrderWithThoseThatHaveNoReadableDescription) {
    system.set([] {
        CfEntries numbered;
        numbered.emplace_back(makeCfObject(std::int64_t{1}), makeCfObject(std::string("one")));
        return elements(nullptr, makeCfObject(std::string("a name")), makeCfObject(std::move(numbered)),
                        battery(3), battery(4));
    });
    const auto all = sources.descriptions();
    ASSERT_EQ(all.size(), 5U);
    EXPECT_EQ(all[0], std::nullopt);
    EXPECT_EQ(all[1], std::nullopt);
    EXPECT_EQ(all[2], std::nullopt) << "its keys are no strings";
    EXPECT_EQ(all[3].value().currentCapacity, 3);
    EXPECT_EQ(all[4].value().currentCapacity, 4);
}

TEST_F(IoKitPowerSourcesTest, SayNothingOfAnEmptyDescription) {
    EXPECT_EQ(described([] { return dictionary(); }), PowerSourceDescription{});
}

TEST_F(IoKitPowerSourcesTest, AreNoneWithoutABattery) {
    EXPECT_THAT(sources.descriptions(), IsEmpty());
}

TEST_F(IoKitPowerSourcesTest, AreNoneWithoutInformation) {
    system.loseInformation();
    EXPECT_THAT(sources.descriptions(), IsEmpty());
}

TEST_F(IoKitPowerSourcesTest, AreNoneWithoutAListOfThem) {
    system.set([] { return elements(battery(57)); });
    system.replaceList([] { return nullptr; });
    EXPECT_THAT(sources.descriptions(), IsEmpty());
    system.replaceList([] { return makeCfObject(std::string("no array")); });
    EXPECT_THAT(sources.descriptions(), IsEmpty());
}

TEST_F(IoKitPowerSourcesTest, AreReadAfresh) {
    system.set([] { return elements(battery(57)); });
    EXPECT_EQ(sources.descriptions().front().value().currentCapacity, 57);
    system.set([] { return elements(battery(56)); });
    EXPECT_EQ(sources.descriptions().front().value().currentCapacity, 56);
}

}  // namespace
}  // namespace corvane
