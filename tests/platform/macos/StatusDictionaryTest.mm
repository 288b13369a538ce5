#include <cmath>
#include <limits>

#import <Foundation/Foundation.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/StatusDictionary.h"

namespace corvane {
namespace {

using testing::Pointee;

/// A record that another one holds, and so on.
NSDictionary* nested(int levels) {
    return levels == 1 ? @{} : @{@"inner" : @[ nested(levels - 1) ]};
}

/// What becomes of one value.
StatusRecord recordWith(id value) {
    return recordOf(@{@"key" : value}).value();
}

TEST(StatusDictionary, KeepsEachTypeOnItsWay) {
    StatusRecord fan;
    fan.set(StatusKey::currentRPM, 1200);
    StatusRecord sent;
    sent.set("yes", true);
    sent.set("no", false);
    sent.set("zero", 0);
    sent.set("one", 1);
    sent.set("least", std::numeric_limits<std::int32_t>::min());
    sent.set("real", 60.0);
    sent.set("text", std::string("Lüfter"));
    sent.set(StatusKey::fans, std::vector<StatusRecord>{fan, {}});
    const StatusRecord record = recordOf(dictionaryOf(sent)).value();
    EXPECT_THAT(record.get<bool>("yes"), Pointee(true));
    EXPECT_THAT(record.get<bool>("no"), Pointee(false));
    EXPECT_THAT(record.get<std::int32_t>("zero"), Pointee(0));
    EXPECT_THAT(record.get<std::int32_t>("one"), Pointee(1));
    EXPECT_THAT(record.get<std::int32_t>("least"), Pointee(std::numeric_limits<std::int32_t>::min()));
    EXPECT_THAT(record.get<double>("real"), Pointee(60.0));
    EXPECT_THAT(record.get<std::string>("text"), Pointee(std::string("Lüfter")));
    const auto* fans = record.get<std::vector<StatusRecord>>(StatusKey::fans);
    ASSERT_THAT(fans, Pointee(testing::SizeIs(2)));
    EXPECT_THAT(fans->front().get<std::int32_t>(StatusKey::currentRPM), Pointee(1200));
}

TEST(StatusDictionary, LeavesOutWhatHasNoType) {
    StatusRecord sent;
    sent.set("unknown", std::monostate());
    sent.set("known", 1);
    EXPECT_EQ(dictionaryOf(sent).count, 1U);
}

TEST(StatusDictionary, ReadsIntegersOfAnyWidthThatFit) {
    EXPECT_THAT(recordWith(@7LL).get<std::int32_t>("key"), Pointee(7));
    EXPECT_THAT(recordWith([NSNumber numberWithUnsignedChar:200]).get<std::int32_t>("key"), Pointee(200));
    EXPECT_THAT(recordWith(@1.5F).get<double>("key"), Pointee(1.5));
    const double notANumber = *recordWith([NSNumber numberWithDouble:std::nan("")]).get<double>("key");
    EXPECT_TRUE(std::isnan(notANumber));
}

TEST(StatusDictionary, PassesOverValuesOfOtherTypes) {
    for (id value in @[
             [NSNumber numberWithLongLong:1LL << 31], [NSNumber numberWithLongLong:-(1LL << 31) - 1],
             [NSNumber numberWithUnsignedLongLong:~0ULL], [NSNull null],
             @{@"inner" : @1}, @[ @1, @2 ], [NSData data]
         ]) {
        EXPECT_NE(recordWith(value).get<std::monostate>("key"), nullptr);
    }
}

TEST(StatusDictionary, ReadsNothingThatIsNoRecord) {
    EXPECT_EQ(recordOf(nil).has_value(), false);
    id list = @[ @{} ];
    EXPECT_EQ(recordOf(list).has_value(), false);
    NSMutableDictionary* numbered = [NSMutableDictionary dictionary];
    [numbered setObject:@1 forKey:static_cast<id>(@2)];
    EXPECT_EQ(recordOf(numbered).has_value(), false);
}

TEST(StatusDictionary, ReadsNothingThatIsTooLargeOrTooDeep) {
    NSMutableDictionary<NSString*, id>* wide = [NSMutableDictionary dictionary];
    NSMutableArray* many = [NSMutableArray array];
    for (int i = 0; i < 2000; ++i) {
        wide[[NSString stringWithFormat:@"%d", i]] = @1;
        [many addObject:@{}];
    }
    EXPECT_FALSE(recordOf(wide).has_value());
    EXPECT_FALSE(recordOf(@{@"key" : many}).has_value());
    const std::string text(70'000, 'x');
    NSString* longText = [NSString stringWithUTF8String:text.c_str()];
    EXPECT_FALSE(recordOf(@{@"key" : longText}).has_value());
    EXPECT_FALSE(recordOf(@{longText : @1}).has_value());
    EXPECT_TRUE(recordOf(nested(4)).has_value());
    EXPECT_FALSE(recordOf(nested(5)).has_value());
}

}  // namespace
}  // namespace corvane
