// A test program whose tests pass but for what they leave behind: its run shows that the fakes tell.

#include <string>

#include <gtest/gtest.h>

#include "tests/platform/macos/fakes/CoreFoundation/CfObject.h"
#include "tests/platform/macos/fakes/IOKit/IoObjects.h"

namespace corvane {
namespace {

TEST(Leftovers, OfCoreFoundation) {
    EXPECT_NE(makeCfObject(std::string("forgotten")).release(), nullptr);
}

TEST(Leftovers, OfIoKit) {
    EXPECT_NE(makeIoObject(IoObjectKind::connection), 0U);
}

TEST(Leftovers, None) {
    EXPECT_NE(makeCfObject(std::string("remembered")), nullptr);
}

}  // namespace
}  // namespace corvane
