#include <limits>
#include <string>

#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

namespace corvane::objc {
namespace {

TEST(Numbers, KeepTheTypeThatAMacKeeps) {
    EXPECT_STREQ((@YES).objCType, "c");
    EXPECT_STREQ((@1).objCType, "i");
    EXPECT_STREQ((@1U).objCType, "q");
    EXPECT_STREQ((@1LL).objCType, "q");
    EXPECT_STREQ((@1ULL).objCType, "q");
    EXPECT_STREQ(@(std::numeric_limits<unsigned long long>::max()).objCType, "Q");
    EXPECT_STREQ((@1.5F).objCType, "f");
    EXPECT_STREQ((@1.5).objCType, "d");
}

TEST(Numbers, AreTheSameObjectForTheSameBoolean) {
    EXPECT_EQ(@YES, [NSNumber numberWithBool:true]);
    EXPECT_NE(@YES, @1);
    EXPECT_NE(@YES, [NSNumber numberWithChar:1]);
}

TEST(Numbers, AreEqualByValue) {
    EXPECT_TRUE([@1 isEqual:@YES]);
    EXPECT_TRUE([@1 isEqual:@1.0]);
    EXPECT_EQ((@1).hash, (@1.0).hash);
    EXPECT_FALSE([@1 isEqual:@1.5]);
    EXPECT_FALSE([@(-1LL) isEqual:@(std::numeric_limits<unsigned long long>::max())]);
}

TEST(Numbers, Convert) {
    EXPECT_EQ((@-7.9).integerValue, -7);
    EXPECT_EQ((@1e300).longLongValue, std::numeric_limits<long long>::max());
    EXPECT_EQ(@(std::numeric_limits<unsigned long long>::max()).doubleValue, 0x1p64);
    EXPECT_TRUE((@0.5).boolValue);
    EXPECT_STREQ((@0.1).stringValue.UTF8String, "0.1");
    EXPECT_STREQ((@-3).stringValue.UTF8String, "-3");
}

}  // namespace
}  // namespace corvane::objc
