// More tests that pass but for what they leave behind.

#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include "tests/platform/macos/fakes/objc/Runtime.h"

@interface Forgotten : NSObject
@end

@implementation Forgotten
@end

namespace corvane {
namespace {

TEST(Leftovers, OfObjectiveC) {
    EXPECT_NE(objc_retain([[Forgotten alloc] init]), nil);
}

TEST(Leftovers, OfBlocks) {
    int captured = 1;
    const auto block = ^{
      return captured;
    };
    EXPECT_NE(objc_retain([block copy]), nil);
}

}  // namespace
}  // namespace corvane
