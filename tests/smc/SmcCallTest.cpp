#include <algorithm>
#include <array>
#include <csignal>
#include <vector>

#include <gmock/gmock.h>

#include "smc/csmc.h"
#include "tests/smc/RecordingTransport.h"
#include "tests/smc/smcNumbers.h"

namespace corvane {
namespace {

using testing::ElementsAre;

TEST(SmcCall, ReadsWithTheSizeAndTypeThatTheKeyDeclares) {
    RecordingTransport smc;
    smc.info(1, ui8, 0xD4).value({2});
    std::uint8_t byte = 0;
    std::uint32_t length = 1;
    EXPECT_EQ(smc_call(fNum, readCommand, nullptr, 0, &byte, &length), 0);
    EXPECT_EQ(byte, 2);
    EXPECT_EQ(length, 1U);
    EXPECT_THAT(smc.sent,
                ElementsAre(infoRequest("FNum"), Wire(readCommand).key("FNum").size(1).type("ui8 ")));
}

TEST(SmcCall, WritesWithTheSizeThatTheKeyDeclaresAndNoType) {
    RecordingTransport smc;
    smc.info(4, flt).accepted();
    const std::array<std::uint8_t, 2> input{0xAB, 0xCD};
    EXPECT_EQ(smc_call(fNum, writeCommand, input.data(), 2, nullptr, nullptr), 0);
    EXPECT_THAT(smc.sent,
                ElementsAre(infoRequest("FNum"), Wire(writeCommand).key("FNum").size(4).value({0xAB, 0xCD})));
}

TEST(SmcCall, SendsAnyOtherCommandAsItIs) {
    RecordingTransport smc;
    smc.info(1, ui8).accepted();
    EXPECT_EQ(smc_call(fNum, 0x2A, nullptr, 0, nullptr, nullptr), 0);
    EXPECT_THAT(smc.sent, ElementsAre(infoRequest("FNum"), Wire(0x2A).key("FNum").size(1)));
}

TEST(SmcCall, ARecordOfInputIgnoredByAReadIsNotSent) {
    RecordingTransport smc;
    smc.info(1, ui8).value({3});
    const std::uint8_t input = 0xFF;
    EXPECT_EQ(smc_call(fNum, readCommand, &input, 1, nullptr, nullptr), 0);
    EXPECT_EQ(smc.sent.at(1), WireRecord(Wire(readCommand).key("FNum").size(1).type("ui8 ")));
}

TEST(SmcCall, CopiesNoMoreThanTheCallerTheKeyAndARecordHold) {
    struct Case {
        std::uint32_t callersLength;
        std::uint32_t declaredSize;
        std::uint32_t copied;
    };
    for (const Case& example :
         {Case{2, 4, 2}, {8, 4, 4}, {64, 200, 32}, {64, 32, 32}, {0, 4, 0}, {4, 0, 0}}) {
        RecordingTransport smc;
        smc.info(example.declaredSize, ui8).value(std::vector<std::uint8_t>(32, 0x11));
        std::vector<std::uint8_t> output(64, 0xEE);
        std::uint32_t length = example.callersLength;
        EXPECT_EQ(smc_call(fNum, readCommand, nullptr, 0, output.data(), &length), 0);
        EXPECT_EQ(length, example.copied);
        std::vector<std::uint8_t> expected(64, 0xEE);
        std::fill_n(expected.begin(), example.copied, std::uint8_t{0x11});
        EXPECT_EQ(output, expected) << example.callersLength << " of " << example.declaredSize;
    }
}

TEST(SmcCall, ReadsWithoutABufferOrALength) {
    RecordingTransport smc;
    smc.info(1, ui8).value({9}).info(1, ui8).value({9});
    std::uint32_t length = 1;
    std::uint8_t byte = 0;
    EXPECT_EQ(smc_call(fNum, readCommand, nullptr, 0, nullptr, &length), 0);
    EXPECT_EQ(length, 1U);
    EXPECT_EQ(smc_call(fNum, readCommand, nullptr, 0, &byte, nullptr), 0);
    EXPECT_EQ(byte, 0);
}

TEST(SmcCall, AWriteLeavesTheOutputAlone) {
    RecordingTransport smc;
    smc.info(1, ui8).value({9});
    std::uint8_t byte = 0x55;
    std::uint32_t length = 1;
    EXPECT_EQ(smc_call(fNum, writeCommand, &byte, 1, &byte, &length), 0);
    EXPECT_EQ(byte, 0x55);
    EXPECT_EQ(length, 1U);
}

TEST(SmcCall, PassesAPlatformsCodeThroughFromEitherExchange) {
    RecordingTransport smc;
    smc.fails(platformCode).info(1, ui8).fails(platformCode);
    std::uint8_t byte = 0x55;
    std::uint32_t length = 1;
    EXPECT_EQ(smc_call(fNum, readCommand, nullptr, 0, &byte, &length), platformCode);
    EXPECT_EQ(smc.sent.size(), 1U) << "no second exchange";
    EXPECT_EQ(smc_call(fNum, readCommand, nullptr, 0, &byte, &length), platformCode);
    EXPECT_EQ(smc.sent.size(), 3U);
    EXPECT_EQ(byte, 0x55);
    EXPECT_EQ(length, 1U);
}

TEST(SmcCall, ReturnsTheControllersResultFromEitherExchange) {
    RecordingTransport smc;
    smc.result(0x84).info(1, ui8).result(0x86);
    std::uint8_t byte = 0x55;
    std::uint32_t length = 1;
    EXPECT_EQ(smc_call(fNum, readCommand, nullptr, 0, &byte, &length), 0x84);
    EXPECT_EQ(smc.sent.size(), 1U);
    EXPECT_EQ(smc_call(fNum, readCommand, nullptr, 0, &byte, &length), 0x86);
    EXPECT_EQ(byte, 0x55);
    EXPECT_EQ(length, 1U);
}

TEST(SmcCall, TakesInputOf32Bytes) {
    RecordingTransport smc;
    smc.info(32, ui8).accepted();
    const std::vector<std::uint8_t> input(32, 0x7F);
    EXPECT_EQ(smc_call(fNum, writeCommand, input.data(), 32, nullptr, nullptr), 0);
    EXPECT_EQ(smc.sent.at(1), WireRecord(Wire(writeCommand).key("FNum").size(32).value(input)));
}

TEST(SmcCallDeathTest, AbortsOnInputLongerThan32Bytes) {
    RecordingTransport smc;
    const std::vector<std::uint8_t> input(33);
    EXPECT_EXIT(smc_call(fNum, writeCommand, input.data(), 33, nullptr, nullptr),
                testing::KilledBySignal(SIGABRT), "");
}

}  // namespace
}  // namespace corvane
