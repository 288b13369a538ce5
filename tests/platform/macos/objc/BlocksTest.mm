#include <memory>
#include <thread>

#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include "tests/platform/macos/fakes/objc/Blocks.h"
#include "tests/platform/macos/fakes/objc/Runtime.h"

namespace corvane::objc {
namespace {

TEST(Blocks, KeepWhatTheyCaptureUntilTheyGo) {
    auto counted = std::make_shared<int>(1);
    __weak id captured = nil;
    @autoreleasepool {
        void (^block)(void) = nil;
        {
            NSObject* object = [[NSObject alloc] init];
            captured = object;
            block = ^{
              EXPECT_NE(object, nil);
              ++*counted;
            };
        }
        block();
        EXPECT_NE(captured, nil);
        EXPECT_EQ(counted.use_count(), 2);
    }
    EXPECT_EQ(captured, nil);
    EXPECT_EQ(*counted, 2);
    EXPECT_EQ(counted.use_count(), 1);
}

TEST(Blocks, ShareVariables) {
    __block int count = 0;
    __block NSObject* object = [[NSObject alloc] init];
    void (^increment)(void) = ^{
      ++count;
    };
    void (^drop)(void) = ^{
      object = nil;
      ++count;
    };
    increment();
    drop();
    std::thread(increment).join();
    EXPECT_EQ(count, 3);
    EXPECT_EQ(object, nil);
}

TEST(Blocks, CaptureBlocksAndWeakReferences) {
    NSObject* object = [[NSObject alloc] init];
    __weak NSObject* weak = object;
    BOOL (^isThere)(void) = ^BOOL {
      return weak != nil;
    };
    BOOL (^outer)(void) = ^BOOL {
      return isThere();
    };
    EXPECT_TRUE(outer());
    object = nil;
    EXPECT_FALSE(outer());
}

int (^copyOf(int (^block)(void)))(void) {
    return [block copy];
}

TEST(Blocks, OutliveTheirFrameAsCopies) {
    int captured = 23;
    int (^copy)(void) = copyOf(^{
      return captured;
    });
    EXPECT_STREQ(class_getName(object_getClass(copy)), "__NSMallocBlock__");
    captured = 0;
    EXPECT_EQ(copy(), 23);
}

TEST(Blocks, AreObjects) {
    void (^block)(int, NSString*) = ^(int, NSString*) {
    };
    NSArray* blocks = @[ block, [block copy] ];
    EXPECT_TRUE([blocks[0] isKindOfClass:[NSObject class]]);
    EXPECT_EQ(std::string(typesOf(block)).substr(0, 1), "v");
}

}  // namespace
}  // namespace corvane::objc
