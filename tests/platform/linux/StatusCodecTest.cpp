#include <limits>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/StatusCodec.h"

namespace corvane {
namespace {

using testing::IsEmpty;
using testing::Pointee;

StatusRecord roundTrip(const StatusRecord& record) {
    return fromBus(toBus(record));
}

/// What a reader finds when the bus delivers `value`.
template <typename T>
StatusRecord delivered(const T& value) {
    return fromBus({{"key", sdbus::Variant(value)}});
}

TEST(StatusCodec, CarriesEveryTypeThereAndBack) {
    StatusRecord sent;
    sent.set("yes", true);
    sent.set("no", false);
    sent.set("smallest", std::numeric_limits<std::int32_t>::min());
    sent.set("largest", std::numeric_limits<std::int32_t>::max());
    sent.set("real", 42.9);
    sent.set("text", std::string("Grüße"));
    const StatusRecord received = roundTrip(sent);
    EXPECT_EQ(received.entries().size(), 6U);
    EXPECT_THAT(received.get<bool>("yes"), Pointee(true));
    EXPECT_THAT(received.get<bool>("no"), Pointee(false));
    EXPECT_THAT(received.get<std::int32_t>("smallest"), Pointee(std::numeric_limits<std::int32_t>::min()));
    EXPECT_THAT(received.get<std::int32_t>("largest"), Pointee(std::numeric_limits<std::int32_t>::max()));
    EXPECT_THAT(received.get<double>("real"), Pointee(42.9));
    EXPECT_THAT(received.get<std::string>("text"), Pointee(std::string("Grüße")));
}

TEST(StatusCodec, CarriesRealsToTheLastBit) {
    for (const double value : {0.0, -0.0, 1e300, 5e-324, std::numeric_limits<double>::infinity()}) {
        StatusRecord sent;
        sent.set("value", value);
        EXPECT_THAT(roundTrip(sent).get<double>("value"), Pointee(value));
    }
    StatusRecord sent;
    sent.set("value", std::numeric_limits<double>::quiet_NaN());
    EXPECT_THAT(roundTrip(sent).get<double>("value"), Pointee(testing::IsNan()));
}

TEST(StatusCodec, CarriesRecordsWithinARecordInTheirOrder) {
    std::vector<StatusRecord> fans(3);
    for (std::size_t i = 0; i < fans.size(); ++i) {
        fans[i].set(StatusKey::index, static_cast<std::int32_t>(i));
        fans[i].set(StatusKey::currentRPM, 2000);
    }
    StatusRecord sent;
    sent.set(StatusKey::fans, fans);
    const StatusRecord received = roundTrip(sent);
    const auto* arrived = received.get<std::vector<StatusRecord>>(StatusKey::fans);
    ASSERT_NE(arrived, nullptr);
    ASSERT_EQ(arrived->size(), 3U);
    for (std::size_t i = 0; i < arrived->size(); ++i) {
        EXPECT_THAT((*arrived)[i].get<std::int32_t>(StatusKey::index), Pointee(static_cast<std::int32_t>(i)));
        EXPECT_THAT((*arrived)[i].get<std::int32_t>(StatusKey::currentRPM), Pointee(2000));
    }
}

TEST(StatusCodec, CarriesAnEmptyArrayAsAnArray) {
    StatusRecord sent;
    sent.set(StatusKey::fans, std::vector<StatusRecord>{});
    const StatusRecord received = roundTrip(sent);
    EXPECT_THAT(received.get<std::vector<StatusRecord>>(StatusKey::fans), Pointee(IsEmpty()));
    EXPECT_THAT(roundTrip({}).entries(), IsEmpty());
}

TEST(StatusCodec, NamesTheTypesOfTheWire) {
    StatusRecord record;
    record.set("b", true);
    record.set("i", 1);
    record.set("d", 1.0);
    record.set("s", std::string("text"));
    record.set("aa{sv}", std::vector<StatusRecord>{});
    for (const auto& [key, value] : toBus(record)) {
        EXPECT_EQ(value.peekValueType(), key);
    }
}

TEST(StatusCodec, DoesNotSendAValueOfUnknownType) {
    StatusRecord record;
    record.set("known", 1);
    record.set("unknown", std::monostate{});
    EXPECT_THAT(toBus(record), testing::ElementsAre(testing::Key("known")));
}

TEST(StatusCodec, TakesEveryOtherTypeForUnknown) {
    for (const StatusRecord& record :
         {delivered(std::uint8_t{1}), delivered(std::int16_t{1}), delivered(std::uint16_t{1}),
          delivered(std::uint32_t{1}), delivered(std::int64_t{1}), delivered(std::uint64_t{1}),
          delivered(sdbus::ObjectPath("/")), delivered(sdbus::Signature("i")),
          delivered(std::vector<std::string>{"a"}), delivered(std::vector<std::int32_t>{1}),
          delivered(BusDictionary{{"a", sdbus::Variant(1)}}),
          delivered(sdbus::Struct<std::int32_t, double>(1, 2.0))}) {
        EXPECT_THAT(record.get<std::monostate>("key"), testing::NotNull())
            << "an alternative of index " << record.entries().front().second.index();
    }
}

}  // namespace
}  // namespace corvane
