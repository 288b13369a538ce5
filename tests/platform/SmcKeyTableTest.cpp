#include <algorithm>
#include <array>
#include <vector>

#include <gtest/gtest.h>

#include "platform/SmcKeyTable.h"

namespace corvane {
namespace {

/// Three keys whose values are plain bytes; remembers what reached it.
class ThreeKeys final : public SmcKeyTable {
public:
    [[nodiscard]] std::span<const SmcKey> keys() const override { return threeKeys; }

    SmcResult read(std::size_t index, std::span<std::uint8_t> bytes) override {
        lastIndex = index;
        std::ranges::fill(bytes, std::uint8_t{0xAB});
        return answer;
    }

    SmcResult write(std::size_t index, std::span<const std::uint8_t> bytes) override {
        lastIndex = index;
        written.assign(bytes.begin(), bytes.end());
        return answer;
    }

    SmcResult answer = SmcResult::success;
    std::size_t lastIndex = 99;
    std::vector<std::uint8_t> written;

private:
    static constexpr std::array<SmcKey, 3> threeKeys{{
        {fourCharCode("AAAA"), fourCharCode("flt "), 4, SmcAttribute::readable | SmcAttribute::littleEndian},
        {fourCharCode("Both"), fourCharCode("ui8 "), 1, SmcAttribute::readable | SmcAttribute::writable},
        {fourCharCode("aaaa"), fourCharCode("ui16"), 2, SmcAttribute::writable},
    }};
};

class SmcKeyTableTest : public testing::Test {
protected:
    SmcRecord ask(SmcCommand command, std::string_view key, std::uint32_t size = 0) {
        SmcRecord record;
        record.data8 = static_cast<std::uint8_t>(command);
        record.key = fourCharCode(key);
        record.keyInfo.dataSize = size;
        record.bytes = {1, 2, 3, 4, 5};
        answerFromTable(table, record);
        return record;
    }

    ThreeKeys table;
};

TEST_F(SmcKeyTableTest, TellsSizeTypeAndAttributesOfAKey) {
    const SmcRecord record = ask(SmcCommand::keyInfo, "AAAA");
    EXPECT_EQ(record.result, 0x00);
    EXPECT_EQ(record.keyInfo.dataSize, 4U);
    EXPECT_EQ(record.keyInfo.dataType, fourCharCode("flt "));
    EXPECT_EQ(record.keyInfo.dataAttributes, 0x84);
    EXPECT_EQ(table.lastIndex, 99U) << "its value is left alone";
}

TEST_F(SmcKeyTableTest, TellsTheKeyAtAnIndex) {
    for (std::uint32_t index = 0; index < 3; ++index) {
        SmcRecord record;
        record.data8 = static_cast<std::uint8_t>(SmcCommand::keyAtIndex);
        record.data32 = index;
        answerFromTable(table, record);
        EXPECT_EQ(record.result, 0x00);
        EXPECT_EQ(record.key, table.keys()[index].name);
    }
}

TEST_F(SmcKeyTableTest, KnowsNoKeyBehindTheLast) {
    for (const std::uint32_t index : {3U, 4U, 0xFFFFFFFFU}) {
        SmcRecord record;
        record.data8 = static_cast<std::uint8_t>(SmcCommand::keyAtIndex);
        record.data32 = index;
        answerFromTable(table, record);
        EXPECT_EQ(record.result, 0xB8) << index;
    }
}

TEST_F(SmcKeyTableTest, ReadsAValueOfTheDeclaredSize) {
    const SmcRecord record = ask(SmcCommand::readKey, "AAAA", 4);
    EXPECT_EQ(record.result, 0x00);
    EXPECT_EQ(table.lastIndex, 0U);
    EXPECT_EQ(record.bytes[0], 0xAB);
    EXPECT_EQ(record.bytes[3], 0xAB);
    EXPECT_EQ(record.bytes[4], 5) << "nothing behind the value is touched";
}

TEST_F(SmcKeyTableTest, WritesAValueOfTheDeclaredSize) {
    EXPECT_EQ(ask(SmcCommand::writeKey, "aaaa", 2).result, 0x00);
    EXPECT_EQ(table.lastIndex, 2U);
    EXPECT_EQ(table.written, (std::vector<std::uint8_t>{1, 2}));
}

TEST_F(SmcKeyTableTest, DoesNotKnowOtherKeys) {
    for (const char* key : {"AAAB", "0000", "zzzz", "both", ""}) {
        for (const SmcCommand command : {SmcCommand::keyInfo, SmcCommand::readKey, SmcCommand::writeKey}) {
            EXPECT_EQ(ask(command, key, 1).result, 0x84) << key;
        }
    }
    EXPECT_EQ(table.lastIndex, 99U);
}

TEST_F(SmcKeyTableTest, DoesNotReadWhatIsNotReadable) {
    EXPECT_EQ(ask(SmcCommand::readKey, "aaaa", 2).result, 0x85);
    EXPECT_EQ(table.lastIndex, 99U);
}

TEST_F(SmcKeyTableTest, DoesNotWriteWhatIsNotWritable) {
    EXPECT_EQ(ask(SmcCommand::writeKey, "AAAA", 4).result, 0x86);
    EXPECT_EQ(table.lastIndex, 99U);
}

TEST_F(SmcKeyTableTest, InsistsOnTheDeclaredSize) {
    for (const std::uint32_t size : {0U, 2U, 33U, 0xFFFFFFFFU}) {
        EXPECT_EQ(ask(SmcCommand::readKey, "Both", size).result, 0x87) << size;
        EXPECT_EQ(ask(SmcCommand::writeKey, "Both", size).result, 0x87) << size;
    }
    EXPECT_EQ(table.lastIndex, 99U);
}

TEST_F(SmcKeyTableTest, DoesNotKnowOtherCommands) {
    for (const int command : {0, 1, 2, 4, 7, 10, 255}) {
        EXPECT_EQ(ask(static_cast<SmcCommand>(command), "Both", 1).result, 0x82) << command;
    }
    EXPECT_EQ(table.lastIndex, 99U);
}

TEST_F(SmcKeyTableTest, PassesTheTablesOwnAnswersOn) {
    table.answer = SmcResult::badArgument;
    EXPECT_EQ(ask(SmcCommand::readKey, "Both", 1).result, 0x89);
    EXPECT_EQ(ask(SmcCommand::writeKey, "Both", 1).result, 0x89);
}

TEST(FourCharCode, PutsTheFirstCharacterInTheMostSignificantByte) {
    EXPECT_EQ(fourCharCode("FNum"), 0x464E756DU);
    EXPECT_EQ(fourCharCode("Ab"), 0x41620000U);
    EXPECT_EQ(fourCharCode("FNumber"), 0x464E756DU);
    EXPECT_EQ(fourCharCode("\xFF"), 0xFF000000U);
}

}  // namespace
}  // namespace corvane
