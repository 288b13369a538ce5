#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/SmcKeyTable.h"
#include "smc/diagnostics/ValueDecoding.h"

namespace corvane {
namespace {

constexpr std::uint8_t big = 0x80;
constexpr std::uint8_t little = 0x84;

std::string decoded(std::string_view type, std::vector<std::uint8_t> bytes, std::uint8_t attributes = big) {
    return decodeValue(fourCharCode(type), attributes, bytes);
}

TEST(ValueDecoding, KnowsFloatsAndFixedPointNumbers) {
    EXPECT_EQ(decoded("flt ", {0x00, 0x60, 0xBB, 0x44}), "1499.00");
    EXPECT_EQ(decoded("flt ", {0x00, 0x00, 0xC0, 0x7F}), "nan");
    EXPECT_EQ(decoded("fpe2", {0x2E, 0xE0}), "3000.00");
    EXPECT_EQ(decoded("fp2e", {0x40, 0x00}), "1.00");
    EXPECT_EQ(decoded("sp78", {0x3C, 0x80}), "60.50");
    EXPECT_EQ(decoded("sp78", {0xFF, 0x80}), "-0.50");
    EXPECT_EQ(decoded("ioft", {0x00, 0x80, 0x29, 0, 0, 0, 0, 0}), "41.50");
    EXPECT_EQ(decoded("ioft", {0x00, 0x80, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}), "-0.50");
}

TEST(ValueDecoding, ReadsWholeNumbersInTheByteOrderTheAttributesTell) {
    EXPECT_EQ(decoded("ui8 ", {0xFF}), "255");
    EXPECT_EQ(decoded("si8 ", {0xFF}), "-1");
    EXPECT_EQ(decoded("ui16", {0x01, 0x02}), "258");
    EXPECT_EQ(decoded("ui16", {0x01, 0x02}, little), "513");
    EXPECT_EQ(decoded("si16", {0xFF, 0xFE}), "-2");
    EXPECT_EQ(decoded("ui32", {0, 0, 0x01, 0x00}), "256");
    EXPECT_EQ(decoded("si32", {0xFE, 0xFF, 0xFF, 0xFF}, little), "-2");
    EXPECT_EQ(decoded("ui64", {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}), "18446744073709551615");
    EXPECT_EQ(decoded("si64", {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}), "-1");
}

TEST(ValueDecoding, KnowsFlagsAndTexts) {
    EXPECT_EQ(decoded("flag", {0}), "false");
    EXPECT_EQ(decoded("flag", {2}), "true");
    EXPECT_EQ(decoded("ch8*", {'J', '3', '1', '6', 0, 'x'}), "\"J316\"");
    EXPECT_EQ(decoded("ch8*", {'a', 0x1B, 0xC3}), "\"a..\"");
    EXPECT_EQ(decoded("ch8*", {}), "\"\"");
}

TEST(ValueDecoding, DoesNotGuessAtOtherTypesAndLengths) {
    EXPECT_EQ(decoded("hex_", {1, 2}), "-");
    EXPECT_EQ(decoded("flt ", {1, 2}), "-");
    EXPECT_EQ(decoded("ioft", {1, 2, 3, 4}), "-");
    EXPECT_EQ(decoded("fpe2", {1, 2, 3}), "-");
    EXPECT_EQ(decoded("fpez", {1, 2}), "-");
    EXPECT_EQ(decoded("ui32", {1}), "-");
    EXPECT_EQ(decoded("ui24", {1, 2, 3}), "-");
    EXPECT_EQ(decoded("flag", {}), "-");
    EXPECT_EQ(decodeValue(0, big, {}), "-");
}

TEST(ValueDecoding, ShowsPointsInPlaceOfWhatATerminalMightObey) {
    EXPECT_EQ(fourCharText(0x466E1B00), "Fn..");
    EXPECT_EQ(fourCharText(0xFF7E7F20), ".~. ");
}

}  // namespace
}  // namespace corvane
