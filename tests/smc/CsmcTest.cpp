#include <array>
#include <functional>
#include <vector>

#include <gmock/gmock.h>

#include "platform/SmcKeyTable.h"
#include "smc/csmc.h"
#include "tests/platform/simulated/AllocationCount.h"
#include "tests/smc/RecordingTransport.h"
#include "tests/smc/smcNumbers.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Csmc, OpensOnTheFirstCallThatNeedsItAndNeverAgain) {
    RecordingTransport smc;
    EXPECT_EQ(smc.openCalls, 0);
    EXPECT_EQ(csmc_open(), 0);
    EXPECT_EQ(csmc_open(), 0);
    EXPECT_EQ(smc.openCalls, 1);
    csmc_key_count();
    csmc_read_flt("Tp09", nullptr);
    EXPECT_EQ(smc.openCalls, 1);
}

TEST(Csmc, OpeningExchangesNothing) {
    RecordingTransport smc;
    EXPECT_EQ(csmc_open(), 0);
    EXPECT_THAT(smc.sent, IsEmpty());
}

TEST(Csmc, EveryExchangingFunctionOpensForItself) {
    const std::vector<std::function<void()>> functions{
        [] { smc_call(fNum, readCommand, nullptr, 0, nullptr, nullptr); },
        [] { csmc_read_flt("Tp09", nullptr); },
        [] { csmc_write_flt("F0Tg", 1.0F); },
        [] { csmc_read_u8("FNum", nullptr); },
        [] { csmc_write_fpe2("F0Tg", 1); },
        [] { csmc_write_u8("Ftst", 1); },
        [] { csmc_key_info("FNum", nullptr, nullptr, nullptr); },
        [] {
            std::uint8_t byte = 0;
            csmc_read_raw("FNum", &byte, 1, nullptr);
        },
        [] { csmc_key_count(); },
        [] {
            char key[5];
            csmc_key_at_index(0, key);
        },
    };
    for (std::size_t i = 0; i < functions.size(); ++i) {
        RecordingTransport smc;
        functions[i]();
        EXPECT_EQ(smc.openCalls, 1) << i;
        EXPECT_FALSE(smc.sent.empty()) << i;
    }
}

TEST(Csmc, StaysOpenAfterErrors) {
    RecordingTransport smc;
    smc.fails(platformCode).result(0x84);
    EXPECT_EQ(csmc_write_u8("Ftst", 1), platformCode);
    EXPECT_EQ(csmc_write_u8("Ftst", 1), 0x84);
    csmc_read_u8("FNum", nullptr);
    EXPECT_EQ(smc.openCalls, 1);
}

TEST(Csmc, PassesTheCodeOfAFailedOpenThroughWithoutAnyExchange) {
    RecordingTransport smc;
    smc.openCode = platformCode;
    char key[5] = "....";
    std::uint8_t ok = 7;
    EXPECT_EQ(csmc_open(), platformCode);
    EXPECT_EQ(smc_call(fNum, readCommand, nullptr, 0, nullptr, nullptr), platformCode);
    EXPECT_EQ(csmc_write_flt("F0Tg", 1.0F), platformCode);
    EXPECT_EQ(csmc_write_fpe2("F0Tg", 1), platformCode);
    EXPECT_EQ(csmc_write_u8("Ftst", 1), platformCode);
    EXPECT_EQ(csmc_key_info("FNum", nullptr, nullptr, nullptr), platformCode);
    EXPECT_EQ(csmc_read_raw("FNum", key, 4, nullptr), platformCode);
    EXPECT_EQ(csmc_key_at_index(0, key), platformCode);
    EXPECT_STREQ(key, "....");
    EXPECT_EQ(csmc_key_count(), 0U);
    EXPECT_EQ(csmc_read_flt("Tp09", &ok), 0.0F);
    EXPECT_EQ(ok, 0);
    EXPECT_EQ(csmc_read_u8("FNum", nullptr), 0);
    EXPECT_EQ(smc.openCalls, 11) << "an open that failed is tried again";
    EXPECT_THAT(smc.sent, IsEmpty());
}

TEST(Csmc, OpensOnceTheControllerAppears) {
    RecordingTransport smc;
    smc.openCode = SmcConnection::noService;
    EXPECT_EQ(csmc_write_u8("Ftst", 1), -1);
    smc.openCode = 0;
    EXPECT_EQ(csmc_write_u8("Ftst", 1), 0);
    EXPECT_EQ(csmc_write_u8("Ftst", 1), 0);
    EXPECT_EQ(smc.openCalls, 2);
}

TEST(Csmc, AnswersMinusOneWithoutAController) {
    csmc_use_connection(nullptr);
    EXPECT_EQ(csmc_open(), -1);
    EXPECT_EQ(csmc_write_u8("Ftst", 1), -1);
    EXPECT_EQ(csmc_key_count(), 0U);
}

TEST(CsmcReadFlt, TakesFourBytesAsTheyLieInMemory) {
    RecordingTransport smc;
    smc.info(4, flt).value({0x00, 0x00, 0x8D, 0x42});
    std::uint8_t ok = 0;
    EXPECT_EQ(csmc_read_flt("Tp09", &ok), 70.5F);
    EXPECT_EQ(ok, 1);
    EXPECT_THAT(smc.sent,
                ElementsAre(infoRequest("Tp09"), Wire(readCommand).key("Tp09").size(4).type("flt ")));
}

TEST(CsmcReadFlt, DoesNotLookAtTheDeclaredType) {
    RecordingTransport smc;
    smc.info(8, fourCharCode("ioft")).value({0x00, 0x00, 0x80, 0x3F, 1, 2, 3, 4});
    std::uint8_t ok = 0;
    EXPECT_EQ(csmc_read_flt("TVMD", &ok), 1.0F);
    EXPECT_EQ(ok, 1);
}

TEST(CsmcReadFlt, CountsFewerThanFourBytesAsAFailure) {
    for (const std::uint32_t size : {0U, 1U, 2U, 3U}) {
        RecordingTransport smc;
        smc.info(size, fpe2).value({0x12, 0x34, 0x56, 0x42});
        std::uint8_t ok = 7;
        EXPECT_EQ(csmc_read_flt("F0Tg", &ok), 0.0F) << size;
        EXPECT_EQ(ok, 0) << size;
    }
}

TEST(CsmcReadFlt, YieldsZeroForAMissingKey) {
    RecordingTransport smc;
    smc.result(0x84);
    std::uint8_t ok = 7;
    EXPECT_EQ(csmc_read_flt("Tp99", &ok), 0.0F);
    EXPECT_EQ(ok, 0);
    EXPECT_THAT(smc.sent, ElementsAre(infoRequest("Tp99")));
}

TEST(CsmcReadFlt, YieldsZeroWhenThePlatformFails) {
    RecordingTransport smc;
    smc.info(4, flt).fails(platformCode);
    std::uint8_t ok = 7;
    EXPECT_EQ(csmc_read_flt("Tp09", &ok), 0.0F);
    EXPECT_EQ(ok, 0);
}

TEST(CsmcReadFlt, WorksWithoutTheFlag) {
    RecordingTransport smc;
    smc.info(4, flt).value({0x00, 0x00, 0x80, 0x3F}).result(0x84);
    EXPECT_EQ(csmc_read_flt("Tp09", nullptr), 1.0F);
    EXPECT_EQ(csmc_read_flt("Tp09", nullptr), 0.0F);
}

TEST(CsmcReadU8, TakesTheFirstByte) {
    RecordingTransport smc;
    smc.info(1, ui8).value({0xFE}).info(4, ui8).value({0x03, 0x99});
    std::uint8_t ok = 0;
    EXPECT_EQ(csmc_read_u8("FNum", &ok), 0xFE);
    EXPECT_EQ(ok, 1);
    EXPECT_EQ(csmc_read_u8("FNum", nullptr), 0x03);
    EXPECT_THAT(smc.sent,
                ElementsAre(infoRequest("FNum"), Wire(readCommand).key("FNum").size(1).type("ui8 "),
                            infoRequest("FNum"), Wire(readCommand).key("FNum").size(4).type("ui8 ")));
}

TEST(CsmcReadU8, YieldsZeroOnFailure) {
    RecordingTransport smc;
    smc.result(0x84).info(1, ui8).fails(platformCode).info(0, ui8).value({9});
    for (int i = 0; i < 3; ++i) {
        std::uint8_t ok = 7;
        EXPECT_EQ(csmc_read_u8("FNum", &ok), 0) << i;
        EXPECT_EQ(ok, 0) << i;
    }
}

TEST(CsmcWriteFlt, SendsTheFloatAsItLiesInMemory) {
    RecordingTransport smc;
    smc.info(4, flt).accepted();
    EXPECT_EQ(csmc_write_flt("F0Tg", 2200.0F), 0);
    EXPECT_THAT(smc.sent,
                ElementsAre(infoRequest("F0Tg"),
                            Wire(writeCommand).key("F0Tg").size(4).value({0x00, 0x80, 0x09, 0x45})));
}

TEST(CsmcWriteFpe2, SendsFourTimesTheValueBigEndian) {
    struct Case {
        std::int32_t value;
        std::vector<std::uint8_t> bytes;
    };
    for (const Case& example : {Case{0, {0, 0}},
                                {1, {0x00, 0x04}},
                                {63, {0x00, 0xFC}},
                                {64, {0x01, 0x00}},
                                {2200, {0x22, 0x60}},
                                {16383, {0xFF, 0xFC}},
                                {16384, {0xFF, 0xFC}},
                                {20000, {0xFF, 0xFC}},
                                {INT32_MAX, {0xFF, 0xFC}},
                                {-1, {0, 0}},
                                {-5, {0, 0}},
                                {INT32_MIN, {0, 0}}}) {
        RecordingTransport smc;
        smc.info(2, fpe2).accepted();
        EXPECT_EQ(csmc_write_fpe2("F0Tg", example.value), 0);
        EXPECT_THAT(smc.sent, ElementsAre(infoRequest("F0Tg"),
                                          Wire(writeCommand).key("F0Tg").size(2).value(example.bytes)))
            << example.value;
    }
}

TEST(CsmcWriteU8, SendsTheLowByte) {
    RecordingTransport smc;
    smc.info(1, ui8).accepted();
    EXPECT_EQ(csmc_write_u8("Ftst", 0x1F2), 0);
    EXPECT_THAT(smc.sent,
                ElementsAre(infoRequest("Ftst"), Wire(writeCommand).key("Ftst").size(1).value({0xF2})));
}

TEST(CsmcWriteU8, PadsALargerKeyWithZeros) {
    RecordingTransport smc;
    smc.info(4, ui8).accepted();
    EXPECT_EQ(csmc_write_u8("Ftst", 1), 0);
    EXPECT_EQ(smc.sent.at(1), WireRecord(Wire(writeCommand).key("Ftst").size(4).value({1, 0, 0, 0})));
}

TEST(CsmcWriteU8, ReturnsTheRefusal) {
    RecordingTransport smc;
    smc.info(1, ui8).result(0x86).info(1, ui8).fails(platformCode);
    EXPECT_EQ(csmc_write_u8("Ftst", 1), 0x86);
    EXPECT_EQ(csmc_write_u8("Ftst", 1), platformCode);
}

TEST(CsmcKeyInfo, FillsTheOutsOnSuccess) {
    RecordingTransport smc;
    smc.info(4, flt, 0xD4);
    std::uint32_t size = 0;
    std::uint32_t type = 0;
    std::uint8_t attributes = 0;
    EXPECT_EQ(csmc_key_info("Tp09", &size, &type, &attributes), 0);
    EXPECT_EQ(size, 4U);
    EXPECT_EQ(type, 0x666C7420U);
    EXPECT_EQ(attributes, 0xD4);
    EXPECT_THAT(smc.sent, ElementsAre(infoRequest("Tp09")));
}

TEST(CsmcKeyInfo, LeavesTheOutsAloneOnFailure) {
    RecordingTransport smc;
    smc.result(0x84).fails(platformCode);
    std::uint32_t size = 11;
    std::uint32_t type = 22;
    std::uint8_t attributes = 33;
    EXPECT_EQ(csmc_key_info("Tp09", &size, &type, &attributes), 0x84);
    EXPECT_EQ(csmc_key_info("Tp09", &size, &type, &attributes), platformCode);
    EXPECT_EQ(size, 11U);
    EXPECT_EQ(type, 22U);
    EXPECT_EQ(attributes, 33);
}

TEST(CsmcKeyInfo, WorksWithoutAnyOfTheOuts) {
    RecordingTransport smc;
    smc.info(4, flt, 0xD4).info(4, flt, 0xD4);
    std::uint32_t type = 0;
    EXPECT_EQ(csmc_key_info("Tp09", nullptr, &type, nullptr), 0);
    EXPECT_EQ(type, flt);
    EXPECT_EQ(csmc_key_info("Tp09", nullptr, nullptr, nullptr), 0);
}

TEST(CsmcReadRaw, CopiesTheBytesAndTellsHowMany) {
    RecordingTransport smc;
    smc.info(3, fourCharCode("hex_")).value({0xAA, 0xBB, 0xCC, 0xDD});
    std::array<std::uint8_t, 8> buffer{};
    std::uint32_t copied = 0;
    EXPECT_EQ(csmc_read_raw("RPlt", buffer.data(), 8, &copied), 0);
    EXPECT_EQ(copied, 3U);
    EXPECT_EQ(buffer, (std::array<std::uint8_t, 8>{0xAA, 0xBB, 0xCC}));
    EXPECT_THAT(smc.sent,
                ElementsAre(infoRequest("RPlt"), Wire(readCommand).key("RPlt").size(3).type("hex_")));
}

TEST(CsmcReadRaw, WorksWithoutALengthOut) {
    RecordingTransport smc;
    smc.info(2, ui8).value({1, 2});
    std::array<std::uint8_t, 2> buffer{};
    EXPECT_EQ(csmc_read_raw("RPlt", buffer.data(), 2, nullptr), 0);
    EXPECT_EQ(buffer, (std::array<std::uint8_t, 2>{1, 2}));
}

TEST(CsmcReadRaw, LeavesBufferAndLengthAloneOnFailure) {
    RecordingTransport smc;
    smc.info(2, ui8).result(0x85);
    std::array<std::uint8_t, 2> buffer{7, 7};
    std::uint32_t copied = 99;
    EXPECT_EQ(csmc_read_raw("RPlt", buffer.data(), 2, &copied), 0x85);
    EXPECT_EQ(copied, 99U);
    EXPECT_EQ(buffer, (std::array<std::uint8_t, 2>{7, 7}));
}

TEST(CsmcKeyCount, TurnsTheBigEndianCountToHostOrder) {
    RecordingTransport smc;
    smc.info(4, fourCharCode("ui32")).value({0x01, 0x02, 0x03, 0x04});
    EXPECT_EQ(csmc_key_count(), 0x01020304U);
    EXPECT_THAT(smc.sent,
                ElementsAre(infoRequest("#KEY"), Wire(readCommand).key("#KEY").size(4).type("ui32")));
}

TEST(CsmcKeyCount, IsZeroWhenTheControllerFailsOrAnswersTooLittle) {
    RecordingTransport smc;
    smc.result(0x84).info(4, ui8).fails(platformCode).info(3, ui8).value({1, 2, 3, 4});
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(csmc_key_count(), 0U) << i;
    }
    EXPECT_EQ(smc.sent.size(), 5U);
}

TEST(CsmcKeyAtIndex, AsksOnceAndSpellsTheKeyOut) {
    RecordingTransport smc;
    smc.key(fNum);
    char key[5] = {};
    EXPECT_EQ(csmc_key_at_index(0x1234, key), 0);
    EXPECT_STREQ(key, "FNum");
    EXPECT_THAT(smc.sent, ElementsAre(Wire(keyAtIndexCommand).index(0x1234)));
}

TEST(CsmcKeyAtIndex, LeavesTheBufferAloneOnFailure) {
    RecordingTransport smc;
    smc.result(0xB8).fails(platformCode);
    char key[5] = "....";
    EXPECT_EQ(csmc_key_at_index(9, key), 0xB8);
    EXPECT_EQ(csmc_key_at_index(9, key), platformCode);
    EXPECT_STREQ(key, "....");
}

TEST(Csmc, UsesTheFirstFourCharactersOfAKey) {
    RecordingTransport smc;
    csmc_key_info("FNumber", nullptr, nullptr, nullptr);
    csmc_key_info("F0", nullptr, nullptr, nullptr);
    EXPECT_THAT(smc.sent, ElementsAre(infoRequest("FNum"), infoRequest("F0")));
}

TEST(Csmc, NeverAllocates) {
    RecordingTransport smc;
    smc.info(4, flt).value({0x00, 0x00, 0x80, 0x3F});
    smc.answersForEver = true;
    char key[5];
    std::array<std::uint8_t, 32> buffer{};
    std::uint32_t length = 4;
    const std::size_t before = allocationCount();
    csmc_open();
    smc_call(fNum, readCommand, nullptr, 0, buffer.data(), &length);
    csmc_read_flt("Tp09", nullptr);
    csmc_write_flt("F0Tg", 1.0F);
    csmc_read_u8("FNum", nullptr);
    csmc_write_fpe2("F0Tg", 1);
    csmc_write_u8("Ftst", 1);
    csmc_key_info("FNum", nullptr, nullptr, nullptr);
    csmc_read_raw("FNum", buffer.data(), 32, nullptr);
    csmc_key_count();
    csmc_key_at_index(0, key);
    EXPECT_EQ(allocationCount(), before);
}

}  // namespace
}  // namespace corvane
