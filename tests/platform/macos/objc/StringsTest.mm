#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include "tests/platform/macos/fakes/Foundation/StringText.h"

namespace corvane::objc {
namespace {

TEST(Strings, SayWhatTheirLiteralSays) {
    EXPECT_EQ(textOf(@""), "");
    EXPECT_EQ(textOf(@"short"), "short");
    EXPECT_EQ(textOf(@"longer than an address"), "longer than an address");
    EXPECT_EQ(textOf(@"Lüfter – 😀"), "Lüfter – 😀");
}

TEST(Strings, AreEqualWhenTheySayTheSame) {
    EXPECT_TRUE([@"fans" isEqual:stringOf("fans")]);
    EXPECT_TRUE([stringOf("Lüfter") isEqualToString:@"Lüfter"]);
    EXPECT_EQ(@"fans".hash, stringOf("fans").hash);
    EXPECT_FALSE([@"fans" isEqual:@"fan"]);
    EXPECT_FALSE([@"1" isEqual:@1]);
    EXPECT_FALSE([@"" isEqualToString:nil]);
}

TEST(Strings, CountUtf16) {
    EXPECT_EQ(@"ü😀".length, 3U);
}

TEST(Strings, KeepBytesOfValueZero) {
    const std::string text("a\0b", 3);
    EXPECT_EQ(textOf(stringOf(text)), text);
}

TEST(Strings, AreNotMadeOfWhatIsNotUtf8) {
    EXPECT_EQ([NSString stringWithUTF8String:"\xff"], nil);
}

TEST(Strings, AreFormatted) {
    NSString* text = [NSString stringWithFormat:@"%@ %d %5.1f%% %lu %s %llx %@", @"fan", -1, 45.25, 7UL,
                                                "rpm", 255ULL, @[].firstObject];
    EXPECT_EQ(textOf(text), "fan -1  45.2% 7 rpm ff (null)");
}

TEST(Strings, TakePathsApart) {
    EXPECT_EQ(textOf(@"/Applications/Final Render.app/".lastPathComponent), "Final Render.app");
    EXPECT_EQ(textOf(@"/a/b.c/d".pathExtension), "");
    EXPECT_EQ(textOf(@"/a/b.app".pathExtension), "app");
    EXPECT_EQ(textOf(@"Safari.app".stringByDeletingPathExtension), "Safari");
    EXPECT_EQ(textOf([@"/a" stringByAppendingPathComponent:@"b"]), "/a/b");
}

}  // namespace
}  // namespace corvane::objc
