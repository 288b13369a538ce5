#include <limits>
#include <map>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sdbus-c++/sdbus-c++.h>
#include <unistd.h>

#include "platform/linux/StatusCodec.h"

namespace corvane {
namespace {

/// What a reader makes of a message that was written as a `Body`.
template <typename Body>
struct Read {
    StatusRecord record;
};

/// A dictionary as only a careless sender writes it: with one key several times.
struct Repetition {
    std::vector<std::int32_t> values;
};

}  // namespace
}  // namespace corvane

template <typename Body>
struct sdbus::signature_of<corvane::Read<Body>> : sdbus::signature_of<Body> {};
template <>
struct sdbus::signature_of<corvane::Repetition> : sdbus::signature_of<corvane::BusDictionary> {};

namespace corvane {
namespace {

template <typename Body>
sdbus::Message& operator>>(sdbus::Message& message, Read<Body>& read) {
    read.record = fromBus(message);
    return message;
}

sdbus::Message& operator<<(sdbus::Message& message, const Repetition& repetition) {
    message.openContainer("{sv}");
    for (const std::int32_t value : repetition.values) {
        message.openDictEntry("sv");
        message << "key" << sdbus::Variant(value);
        message.closeDictEntry();
    }
    return message.closeContainer();
}

using testing::IsEmpty;
using testing::Pointee;

/// What a reader finds when the bus delivers `body`.
template <typename Body>
StatusRecord received(const Body& body) {
    return sdbus::Variant(body).template get<Read<Body>>().record;
}

StatusRecord roundTrip(const StatusRecord& record) {
    return received(toBus(record));
}

/// What a reader finds when the bus delivers `value`.
template <typename T>
StatusRecord delivered(const T& value) {
    return received(BusDictionary{{"key", sdbus::Variant(value)}});
}

/// A record with `levels` of records within each other.
StatusRecord nested(int levels) {
    StatusRecord record;
    if (levels > 1) {
        record.set("inner", std::vector<StatusRecord>{nested(levels - 1)});
    }
    return record;
}

/// A record with that many plain entries.
StatusRecord wide(int entries) {
    StatusRecord record;
    for (int i = 0; i < entries; ++i) {
        record.set(std::to_string(i), i);
    }
    return record;
}

TEST(StatusCodec, CarriesEveryTypeThereAndBack) {
    StatusRecord sent;
    sent.set("yes", true);
    sent.set("no", false);
    sent.set("smallest", std::numeric_limits<std::int32_t>::min());
    sent.set("largest", std::numeric_limits<std::int32_t>::max());
    sent.set("real", 42.9);
    sent.set("text", std::string("Grüße"));
    const StatusRecord arrival = roundTrip(sent);
    EXPECT_EQ(arrival.entries().size(), 6U);
    EXPECT_THAT(arrival.get<bool>("yes"), Pointee(true));
    EXPECT_THAT(arrival.get<bool>("no"), Pointee(false));
    EXPECT_THAT(arrival.get<std::int32_t>("smallest"), Pointee(std::numeric_limits<std::int32_t>::min()));
    EXPECT_THAT(arrival.get<std::int32_t>("largest"), Pointee(std::numeric_limits<std::int32_t>::max()));
    EXPECT_THAT(arrival.get<double>("real"), Pointee(42.9));
    EXPECT_THAT(arrival.get<std::string>("text"), Pointee(std::string("Grüße")));
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
    const StatusRecord arrival = roundTrip(sent);
    const auto* arrived = arrival.get<std::vector<StatusRecord>>(StatusKey::fans);
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
    const StatusRecord arrival = roundTrip(sent);
    EXPECT_THAT(arrival.get<std::vector<StatusRecord>>(StatusKey::fans), Pointee(IsEmpty()));
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
          delivered(sdbus::UnixFd(STDERR_FILENO)), delivered(std::vector<sdbus::Variant>{sdbus::Variant(1)}),
          delivered(std::vector<std::string>{"a"}), delivered(std::vector<std::int32_t>{1}),
          delivered(std::vector<std::vector<std::string>>{{"a"}, {}}),
          delivered(BusDictionary{{"a", sdbus::Variant(1)}}),
          delivered(sdbus::Struct<std::int32_t, double>(1, 2.0))}) {
        EXPECT_THAT(record.get<std::monostate>("key"), testing::NotNull())
            << "an alternative of index " << record.entries().front().second.index();
    }
}

TEST(StatusCodec, ReadsOnPastAValueOfUnknownType) {
    const StatusRecord record = received(
        BusDictionary{{"1", sdbus::Variant(std::vector<std::string>{"a", "b"})}, {"2", sdbus::Variant(2.0)}});
    EXPECT_THAT(record.get<double>("2"), Pointee(2.0));
}

TEST(StatusCodec, KeepsTheFirstOfSeveralValuesUnderOneKey) {
    const StatusRecord record = received(Repetition{{1, 2}});
    EXPECT_EQ(record.entries().size(), 1U);
    EXPECT_THAT(record.get<std::int32_t>("key"), Pointee(1));
}

TEST(StatusCodec, RefusesWhatIsNoRecord) {
    EXPECT_THROW(received(std::string("text")), sdbus::Error);
    EXPECT_THROW(received(std::map<std::string, std::string>{{"key", "value"}}), sdbus::Error);
    EXPECT_THROW(received(std::vector<BusDictionary>{{}}), sdbus::Error);
}

TEST(StatusCodec, RefusesRecordsTooDeepWithinEachOther) {
    EXPECT_EQ(roundTrip(nested(4)).entries().size(), 1U);
    EXPECT_THROW(roundTrip(nested(5)), sdbus::Error);
}

TEST(StatusCodec, CountsNeighboursAsNoDeeper) {
    StatusRecord sent;
    sent.set("fans", std::vector<StatusRecord>(100, nested(2)));
    EXPECT_THAT(roundTrip(sent).get<std::vector<StatusRecord>>("fans"), Pointee(testing::SizeIs(100)));
}

TEST(StatusCodec, RefusesARecordOfTooManyEntries) {
    EXPECT_EQ(roundTrip(wide(1023)).entries().size(), 1023U);
    EXPECT_THROW(roundTrip(wide(1024)), sdbus::Error);
    StatusRecord empties;
    empties.set("fans", std::vector<StatusRecord>(1024));
    EXPECT_THROW(roundTrip(empties), sdbus::Error);
}

TEST(StatusCodec, RefusesTooMuchText) {
    EXPECT_THAT(delivered(std::string(65533, 'x')).get<std::string>("key"), Pointee(testing::SizeIs(65533)));
    EXPECT_THROW(delivered(std::string(65534, 'x')), sdbus::Error);
}

}  // namespace
}  // namespace corvane
