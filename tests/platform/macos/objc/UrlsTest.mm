#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include "tests/platform/macos/fakes/Foundation/FakeUrlResources.h"

namespace corvane::objc {
namespace {

TEST(Urls, EscapePathsAndGiveThemBack) {
    NSURL* url = [NSURL fileURLWithPath:@"/Volumes/Daten ü%"];
    EXPECT_STREQ(url.absoluteString.UTF8String, "file:///Volumes/Daten%20%C3%BC%25");
    EXPECT_STREQ(url.path.UTF8String, "/Volumes/Daten ü%");
    EXPECT_STREQ([url URLByAppendingPathComponent:@"x y"].lastPathComponent.UTF8String, "x y");
    EXPECT_TRUE(url.fileURL);
}

TEST(Urls, KnowTheirParts) {
    NSURL* url = [NSURL URLWithString:@"https://user@example.org:8443/a%20b/?q=1#x"];
    EXPECT_STREQ(url.scheme.UTF8String, "https");
    EXPECT_STREQ(url.host.UTF8String, "example.org");
    EXPECT_STREQ(url.path.UTF8String, "/a b");
    EXPECT_STREQ([NSURL URLWithString:@"mailto:a@example.org"].scheme.UTF8String, "mailto");
    EXPECT_EQ([NSURL URLWithString:@"no scheme here"], nil);
    EXPECT_EQ([NSURL URLWithString:@""], nil);
}

TEST(Urls, TellOfFilesWhatTheTestSays) {
    FakeUrlResources resources;
    resources.set("/Volumes/Backup", @"name", @"Backup");
    NSURL* url = [NSURL fileURLWithPath:@"/Volumes/Backup"];
    id value = @"old";
    EXPECT_TRUE([url getResourceValue:&value forKey:@"name" error:nil]);
    EXPECT_STREQ([value UTF8String], "Backup");
    EXPECT_TRUE([url getResourceValue:&value forKey:@"other" error:nil]);
    EXPECT_EQ(value, nil);
    NSError* error = nil;
    EXPECT_FALSE([[NSURL fileURLWithPath:@"/none"] getResourceValue:&value forKey:@"name" error:&error]);
    EXPECT_EQ(error.code, 260);
}

}  // namespace
}  // namespace corvane::objc
