#include <bit>
#include <limits>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "platform/SmcKeyTable.h"
#include "smc/SmcReading.h"
#include "tests/smc/RecordingTransport.h"
#include "tests/smc/smcNumbers.h"
#include "tests/support/oddNumbers.h"

namespace corvane {
namespace {

using testing::ElementsAre;

std::vector<std::uint8_t> bytesOf(float value) {
    const auto bytes = std::bit_cast<std::array<std::uint8_t, 4>>(value);
    return {bytes.begin(), bytes.end()};
}

/// A controller whose next key reads `value`.
struct Reading {
    explicit Reading(float value) { smc.info(4, flt).value(bytesOf(value)); }
    RecordingTransport smc;
};

TEST(SmcReading, IsWhatTheKeyReads) {
    const Reading reading(-3.25F);
    EXPECT_EQ(readFinite("Tp09"), -3.25F);
}

TEST(SmcReading, CountsANumberThatIsNotFiniteAsAFailedRead) {
    for (const float value : {infinite<float>, -infinite<float>, notANumber<float>}) {
        const Reading reading(value);
        EXPECT_EQ(readFinite("Tp09"), std::nullopt) << value;
    }
    for (const float value : {infinite<float>, -infinite<float>, notANumber<float>}) {
        const Reading reading(value);
        EXPECT_EQ(readRpm("F0Ac"), std::nullopt) << value;
    }
}

TEST(SmcReading, IsNoneForAKeyThatCannotBeRead) {
    RecordingTransport smc;
    smc.result(0x84).info(2, flt).value({1, 2}).result(0x84);
    EXPECT_EQ(readFinite("Tp09"), std::nullopt);
    EXPECT_EQ(readFinite("Tp09"), std::nullopt) << "two bytes are no float";
    EXPECT_EQ(readRpm("F0Ac"), std::nullopt);
}

TEST(SmcReading, TruncatesSpeedsTowardsZero) {
    struct Case {
        float value;
        int rpm;
    };
    for (const Case& example : {Case{1499.99F, 1499}, {0.9F, 0}, {-0.9F, 0}, {-12.7F, -12}}) {
        const Reading reading(example.value);
        EXPECT_EQ(readRpm("F0Ac"), example.rpm);
    }
}

TEST(SmcReading, HasNoSpeedBeyondWhatAnIntegerHolds) {
    for (const float value : {2147483648.0F, 1e30F, -2147483904.0F, -1e30F}) {
        const Reading reading(value);
        EXPECT_EQ(readRpm("F0Ac"), std::nullopt) << value;
    }
    {
        const Reading reading(2147483520.0F);
        EXPECT_EQ(readRpm("F0Ac"), 2147483520);
    }
    const Reading reading(-2147483648.0F);
    EXPECT_EQ(readRpm("F0Ac"), std::numeric_limits<int>::min());
}

TEST(SmcReading, TellsFloatKeysByTypeAndSize) {
    RecordingTransport smc;
    smc.info(4, flt).info(8, flt).info(4, fourCharCode("flt")).info(4, fourCharCode("si32")).result(0x84);
    EXPECT_TRUE(isFltKey("Tp09"));
    EXPECT_FALSE(isFltKey("Tp09")) << "eight bytes";
    EXPECT_FALSE(isFltKey("Tp09")) << "a type without its blank";
    EXPECT_FALSE(isFltKey("Tp09")) << "an integer";
    EXPECT_FALSE(isFltKey("Tp09")) << "no such key";
}

std::vector<std::string> listedKeys() {
    std::vector<std::string> keys;
    forEachKey([&](const char* key) { keys.emplace_back(key); });
    return keys;
}

TEST(SmcReading, VisitsKeysInTheControllersOrderAndSkipsThoseThatFail) {
    RecordingTransport smc;
    smc.info(4, flt).value({0, 0, 0, 4});
    smc.key(fourCharCode("Tp09")).result(0x85).fails(-5).key(fourCharCode("FNum"));
    EXPECT_THAT(listedKeys(), ElementsAre("Tp09", "FNum"));
    EXPECT_EQ(smc.sent.size(), 2U + 4U);
    EXPECT_EQ(smc.sent.at(2), WireRecord(Wire(8).index(0)));
    EXPECT_EQ(smc.sent.at(5), WireRecord(Wire(8).index(3)));
}

TEST(SmcReading, VisitsNothingWhenThereIsNoCount) {
    RecordingTransport smc;
    smc.result(0x84);
    EXPECT_THAT(listedKeys(), testing::IsEmpty());
    EXPECT_EQ(smc.sent.size(), 1U);
}

TEST(SmcReading, GivesUpOnAnAbsurdKeyCountWithinReason) {
    RecordingTransport smc;
    smc.info(4, flt).value({0xFF, 0xFF, 0xFF, 0xFF});
    forEachKey([](const char* /*key*/) {});
    EXPECT_EQ(smc.sent.size(), 2U + 65536U);
}

}  // namespace
}  // namespace corvane
