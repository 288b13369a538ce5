#include <algorithm>
#include <ostream>
#include <set>
#include <stdexcept>

#include <gtest/gtest.h>

#include "tests/platform/simulated/SimulatedMacFixture.h"

namespace corvane {

// The name is GoogleTest's. NOLINTNEXTLINE(readability-identifier-naming)
void PrintTo(const MacModel& model, std::ostream* out) {
    *out << model.name;
}

namespace {

class EveryMacModel : public testing::TestWithParam<MacModel> {};

INSTANTIATE_TEST_SUITE_P(Models, EveryMacModel, testing::ValuesIn(macModels().begin(), macModels().end()),
                         [](const auto& model) {
                             std::string name = model.param.name;
                             std::ranges::replace(name, '-', '_');
                             return name;
                         });

TEST_P(EveryMacModel, ListsItsKeysOnceAndInByteOrder) {
    MacOnVirtualTime machine(GetParam());
    const std::vector<std::string> names = machine.smc.list();
    ASSERT_GT(names.size(), 100U);
    EXPECT_EQ(std::ranges::adjacent_find(names, std::greater_equal<>()), names.end());
    EXPECT_EQ(names.front(), "#KEY");
}

TEST_P(EveryMacModel, CountsItsKeysInBigEndian) {
    MacOnVirtualTime machine(GetParam());
    const SmcRecord record = machine.smc.read("#KEY");
    ASSERT_EQ(record.result, 0);
    EXPECT_EQ(record.keyInfo.dataType, fourCharCode("ui32"));
    EXPECT_EQ(record.bytes[2] * 256U + record.bytes[3], machine.smc.list().size());
    EXPECT_EQ(record.bytes[0], 0);
    EXPECT_EQ(record.bytes[1], 0);
}

TEST_P(EveryMacModel, LetsEveryListedKeyBeRead) {
    MacOnVirtualTime machine(GetParam());
    for (const std::string& name : machine.smc.list()) {
        EXPECT_EQ(machine.smc.readResult(name), SmcResult::success) << name;
    }
}

TEST_P(EveryMacModel, DeclaresItsFanKeysAsRealMachinesDo) {
    MacOnVirtualTime machine(GetParam());
    EXPECT_EQ(machine.smc.readByte("FNum"), static_cast<int>(GetParam().fans.size()));
    for (std::size_t fan = 0; fan < GetParam().fans.size(); ++fan) {
        const std::string prefix = "F" + std::to_string(fan);
        const auto expectKey = [&](const std::string& name, std::string_view type, unsigned size,
                                   int attributes) {
            const SmcRecord info = machine.smc.info(name);
            EXPECT_EQ(info.result, 0) << name;
            EXPECT_EQ(info.keyInfo.dataType, fourCharCode(type)) << name;
            EXPECT_EQ(info.keyInfo.dataSize, size) << name;
            EXPECT_EQ(info.keyInfo.dataAttributes, attributes) << name;
        };
        expectKey(prefix + "Ac", "flt ", 4, 0x85);
        expectKey(prefix + "Mn", "flt ", 4, 0x84);
        expectKey(prefix + "Mx", "flt ", 4, 0x84);
        expectKey(prefix + "Tg", "flt ", 4, 0xD4);
        expectKey(prefix + (GetParam().modeKeys == ModeKeys::upperCase ? "Md" : "md"), "ui8 ", 1, 0xD0);
        EXPECT_EQ(machine.smc.readFloat(prefix + "Mn"), GetParam().fans[fan].minimum);
        EXPECT_EQ(machine.smc.readFloat(prefix + "Mx"), GetParam().fans[fan].maximum);
        EXPECT_EQ(machine.smc.writeFloat(prefix + "Mn", 1.0F), SmcResult::notWritable);
    }
}

TEST_P(EveryMacModel, HasPlausibleSafetySensorsWhenIdle) {
    MacOnVirtualTime machine(GetParam());
    float hottest = 0.0F;
    int plausible = 0;
    for (const std::string& name : machine.smc.list()) {
        if (name.starts_with("Tp") || name.starts_with("Te") || name.starts_with("Tg")) {
            const float reading = machine.smc.readFloat(name).value_or(0.0F);
            plausible += reading > 20.0F && reading < 60.0F ? 1 : 0;
            hottest = reading == 40.0F ? hottest : std::max(hottest, reading);
        }
    }
    EXPECT_GT(plausible, 25);
    EXPECT_NEAR(static_cast<double>(hottest), machine.mac.dieTemperature(), 0.5);
}

TEST_P(EveryMacModel, HasTheOddSensorsOfRealMachines) {
    MacOnVirtualTime machine(GetParam());
    std::set<std::uint32_t> types;
    int atExactlyForty = 0;
    int atZero = 0;
    int below = 0;
    for (const std::string& name : machine.smc.list()) {
        const SmcRecord record = machine.smc.read(name);
        if (name.front() != 'T') {
            continue;
        }
        types.insert(record.keyInfo.dataType);
        if (record.keyInfo.dataType == fourCharCode("flt ")) {
            const float reading = machine.smc.readFloat(name).value_or(1.0F);
            atExactlyForty += reading == 40.0F ? 1 : 0;
            atZero += reading == 0.0F ? 1 : 0;
            below += reading < 0.0F ? 1 : 0;
        }
    }
    EXPECT_TRUE(types.contains(fourCharCode("ioft")));
    EXPECT_GE(atExactlyForty, 6);
    EXPECT_GE(atZero, 5);
    EXPECT_GE(below, 1);
}

TEST_P(EveryMacModel, IsFoundByItsName) {
    const MacModel* found = findMacModel(GetParam().name);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->title, GetParam().title);
}

TEST(MacModel, TheDefaultHasTwoFansAndTheUpperCaseModeKey) {
    const MacModel& model = macModels().front();
    EXPECT_EQ(model.name, SimulatedMac::Options{}.model.name);
    ASSERT_EQ(model.fans.size(), 2U);
    EXPECT_EQ(model.fans[0].minimum, 1499.0F);
    EXPECT_EQ(model.fans[0].maximum, 5348.0F);
    EXPECT_EQ(model.fans[1].minimum, 1499.0F);
    EXPECT_EQ(model.fans[1].maximum, 5776.0F);
    EXPECT_EQ(model.modeKeys, ModeKeys::upperCase);
}

TEST(MacModel, ModelsDifferInFansAndKeys) {
    EXPECT_EQ(macBookAir().fans.size(), 0U);
    EXPECT_EQ(macBookPro13().fans.size(), 1U);
    MacOnVirtualTime fanless(macBookAir());
    EXPECT_EQ(fanless.smc.readByte("FNum"), 0);
    EXPECT_EQ(fanless.smc.readResult("F0Ac"), SmcResult::keyNotFound);
    MacOnVirtualTime newest(macBookPro14M5());
    EXPECT_EQ(newest.smc.readByte("F0md"), 0);
    EXPECT_EQ(newest.smc.readResult("F0Md"), SmcResult::keyNotFound);
    EXPECT_EQ(newest.smc.readResult("Ftst"), SmcResult::keyNotFound);
    EXPECT_EQ(findMacModel("toaster"), nullptr);
}

TEST(MacModel, OtherTypesAreStoredInTheirOwnWay) {
    MacOnVirtualTime machine(macBookPro14M4());
    machine.mac.holdSensor("TG0B", 28.7F);
    const SmcRecord fixedPoint = machine.smc.read("TG0B");
    EXPECT_EQ(fixedPoint.keyInfo.dataSize, 8U);
    EXPECT_EQ(SmcClient::littleEndian(fixedPoint), 0x001CB333U);
    EXPECT_EQ(fixedPoint.bytes[4], 0);
    const SmcRecord integer = machine.smc.read("TVDi");
    EXPECT_EQ(integer.keyInfo.dataType, fourCharCode("si32"));
    EXPECT_EQ(SmcClient::littleEndian(integer), 10U);
    machine.mac.holdSensor("T*", -1.0F);
    EXPECT_EQ(SmcClient::littleEndian(machine.smc.read("TVDi")), 0xFFFFFFFFU);
    EXPECT_EQ(SmcClient::littleEndian(machine.smc.read("TG0B")), 0xFFFF0000U);
    EXPECT_EQ(machine.smc.read("TG0B").bytes[7], 0xFF);
}

TEST(MacModel, GatedCoresReadFortyOnlyWithoutLoad) {
    MacOnVirtualTime machine(macBookPro16());
    EXPECT_EQ(machine.smc.readFloat("Tp0O"), 40.0F);
    machine.mac.setLoad(60.0);
    machine.time.advance(std::chrono::minutes(5));
    EXPECT_GT(machine.smc.readFloat("Tp0O").value_or(0.0F), 60.0F);
}

TEST(MacModel, ATinyMacHasOneSensorAndRoundLimits) {
    MacOnVirtualTime machine(tinyMac());
    EXPECT_EQ(machine.smc.list(), (std::vector<std::string>{"#KEY", "F0Ac", "F0Md", "F0Mn", "F0Mx", "F0Tg",
                                                            "FNum", "Ftst", "Tp09"}));
}

TEST(MacModel, ModelsThatBreakTheRulesAreRefused) {
    MacModel twice = tinyMac();
    twice.sensors.push_back(sensor::sink("Tp09", 0.0F));
    EXPECT_THROW(MacOnVirtualTime{twice}, std::invalid_argument);
    MacModel windy = tinyMac();
    windy.fans.resize(11, {1000.0F, 5000.0F});
    EXPECT_THROW(MacOnVirtualTime{windy}, std::invalid_argument);
}

}  // namespace
}  // namespace corvane
