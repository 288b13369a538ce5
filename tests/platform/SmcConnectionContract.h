#pragma once

// What every SmcConnection promises, as a suite that is run over each of them. A rig is made of:
//   SmcConnection& connection();      not open yet, to a machine with a fan that can be forced
//   std::int32_t openWithoutController();   the answer of a connection to a machine without a controller

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/SmcConnection.h"
#include "platform/SmcKeyTable.h"
#include "tests/platform/simulated/AllocationCount.h"

namespace corvane {

template <typename Rig>
class SmcConnectionContract : public testing::Test {
protected:
    using Bytes = std::array<std::uint8_t, 32>;

    SmcConnection& connection() { return rig.connection(); }
    void open() { ASSERT_EQ(connection().open(), 0); }

    /// The answer; whatever it says, the record came back.
    SmcRecord exchange(SmcRecord record) {
        EXPECT_EQ(connection().exchange(record), 0);
        return record;
    }

    SmcRecord send(SmcCommand command, std::string_view key, std::uint32_t size = 0,
                   const Bytes& bytes = {}) {
        SmcRecord record;
        record.key = fourCharCode(key);
        record.keyInfo.dataSize = size;
        record.data8 = static_cast<std::uint8_t>(command);
        record.bytes = bytes;
        return exchange(record);
    }

    SmcResult result(SmcCommand command, std::string_view key, std::uint32_t size = 0) {
        return static_cast<SmcResult>(send(command, key, size).result);
    }

    int readByte(std::string_view key) {
        const SmcRecord answer = send(SmcCommand::readKey, key, 1);
        EXPECT_EQ(answer.result, 0) << key;
        return answer.bytes[0];
    }

    float readFloat(std::string_view key) {
        const SmcRecord answer = send(SmcCommand::readKey, key, sizeof(float));
        EXPECT_EQ(answer.result, 0) << key;
        float value = 0;
        std::memcpy(&value, answer.bytes.data(), sizeof value);
        return value;
    }

    SmcResult writeByte(std::string_view key, std::uint8_t value) {
        return static_cast<SmcResult>(send(SmcCommand::writeKey, key, 1, {value}).result);
    }

    SmcResult writeFloat(std::string_view key, float value) {
        Bytes bytes{};
        std::memcpy(bytes.data(), &value, sizeof value);
        return static_cast<SmcResult>(send(SmcCommand::writeKey, key, sizeof value, bytes).result);
    }

    SmcRecord keyAt(std::uint32_t index) {
        SmcRecord record;
        record.data8 = static_cast<std::uint8_t>(SmcCommand::keyAtIndex);
        record.data32 = index;
        return exchange(record);
    }

    std::vector<std::uint32_t> list() {
        std::vector<std::uint32_t> keys;
        for (SmcRecord answer = keyAt(0); answer.result == 0;
             answer = keyAt(static_cast<std::uint32_t>(keys.size()))) {
            keys.push_back(answer.key);
        }
        return keys;
    }

    Rig rig;
};

TYPED_TEST_SUITE_P(SmcConnectionContract);

TYPED_TEST_P(SmcConnectionContract, OpensMoreThanOnce) {
    EXPECT_EQ(this->connection().open(), 0);
    EXPECT_EQ(this->connection().open(), 0);
}

TYPED_TEST_P(SmcConnectionContract, SaysThatThereIsNoController) {
    EXPECT_EQ(this->rig.openWithoutController(), SmcConnection::noService);
}

TYPED_TEST_P(SmcConnectionContract, DescribesAKey) {
    this->open();
    const SmcRecord answer = this->send(SmcCommand::keyInfo, "FNum");
    EXPECT_EQ(answer.result, 0);
    EXPECT_EQ(answer.keyInfo.dataSize, 1U);
    EXPECT_EQ(answer.keyInfo.dataType, fourCharCode("ui8 "));
    EXPECT_NE(answer.keyInfo.dataAttributes & SmcAttribute::readable, 0);
}

TYPED_TEST_P(SmcConnectionContract, ReadsValuesInTheControllersOwnOrder) {
    this->open();
    EXPECT_GE(this->readByte("FNum"), 1);
    EXPECT_GT(this->readFloat("F0Mx"), 500.0F);
}

TYPED_TEST_P(SmcConnectionContract, ListsItsKeysInAscendingOrderAndCountsThem) {
    this->open();
    const std::vector<std::uint32_t> keys = this->list();
    EXPECT_THAT(keys, testing::Contains(fourCharCode("FNum")));
    EXPECT_TRUE(std::ranges::is_sorted(keys));
    const SmcRecord count = this->send(SmcCommand::readKey, "#KEY", 4);
    EXPECT_EQ(count.result, 0);
    EXPECT_EQ(static_cast<std::size_t>(count.bytes[2]) << 8U | count.bytes[3], keys.size());
}

TYPED_TEST_P(SmcConnectionContract, EndsTheListWithAResult) {
    this->open();
    const auto end = static_cast<std::uint32_t>(this->list().size());
    EXPECT_EQ(this->keyAt(end).result, static_cast<std::uint8_t>(SmcResult::indexOutOfRange));
    EXPECT_EQ(this->keyAt(0xFFFFFFFF).result, static_cast<std::uint8_t>(SmcResult::indexOutOfRange));
}

TYPED_TEST_P(SmcConnectionContract, AnswersForAKeyThatThereIsNot) {
    this->open();
    EXPECT_EQ(this->result(SmcCommand::keyInfo, "ZZZZ"), SmcResult::keyNotFound);
    EXPECT_EQ(this->result(SmcCommand::readKey, "ZZZZ", 1), SmcResult::keyNotFound);
    EXPECT_EQ(this->writeByte("ZZZZ", 1), SmcResult::keyNotFound);
}

TYPED_TEST_P(SmcConnectionContract, InsistsOnAKeysOwnSize) {
    this->open();
    EXPECT_EQ(this->result(SmcCommand::readKey, "FNum", 4), SmcResult::sizeMismatch);
    EXPECT_EQ(this->result(SmcCommand::writeKey, "Ftst", 4), SmcResult::sizeMismatch);
}

TYPED_TEST_P(SmcConnectionContract, TakesNoValueForAKeyThatIsReadOnly) {
    this->open();
    const int fans = this->readByte("FNum");
    EXPECT_EQ(this->writeByte("FNum", 9), SmcResult::notWritable);
    EXPECT_EQ(this->readByte("FNum"), fans);
}

TYPED_TEST_P(SmcConnectionContract, KnowsItsCommandsOnly) {
    this->open();
    EXPECT_EQ(this->result(static_cast<SmcCommand>(0x42), "FNum"), SmcResult::badCommand);
}

TYPED_TEST_P(SmcConnectionContract, TakesAFanOverAndHandsItBack) {
    this->open();
    EXPECT_EQ(this->readByte("F0Md"), 0);
    EXPECT_EQ(this->writeByte("Ftst", 1), SmcResult::success);
    EXPECT_EQ(this->writeByte("F0Md", 1), SmcResult::success);
    EXPECT_EQ(this->readByte("F0Md"), 1);
    const float fastest = this->readFloat("F0Mx");
    EXPECT_EQ(this->writeFloat("F0Tg", fastest), SmcResult::success);
    EXPECT_FLOAT_EQ(this->readFloat("F0Tg"), fastest);
    EXPECT_EQ(this->writeByte("F0Md", 0), SmcResult::success);
    EXPECT_EQ(this->writeByte("Ftst", 0), SmcResult::success);
    EXPECT_EQ(this->readByte("F0Md"), 0);
}

TYPED_TEST_P(SmcConnectionContract, ExchangesWithoutAllocating) {
    this->open();
    this->readByte("FNum");
    const std::size_t before = allocationCount();
    SmcRecord record;
    record.key = fourCharCode("FNum");
    record.keyInfo.dataSize = 1;
    record.data8 = static_cast<std::uint8_t>(SmcCommand::readKey);
    const std::int32_t code = this->connection().exchange(record);
    EXPECT_EQ(allocationCount(), before);
    EXPECT_EQ(code, 0);
    EXPECT_EQ(record.result, 0);
}

REGISTER_TYPED_TEST_SUITE_P(SmcConnectionContract, OpensMoreThanOnce, SaysThatThereIsNoController,
                            DescribesAKey, ReadsValuesInTheControllersOwnOrder,
                            ListsItsKeysInAscendingOrderAndCountsThem, EndsTheListWithAResult,
                            AnswersForAKeyThatThereIsNot, InsistsOnAKeysOwnSize,
                            TakesNoValueForAKeyThatIsReadOnly, KnowsItsCommandsOnly,
                            TakesAFanOverAndHandsItBack, ExchangesWithoutAllocating);

}  // namespace corvane
