#include <memory>

#include <gtest/gtest.h>

#include "tests/platform/macos/fakes/Leftovers.h"
#include "tests/platform/macos/fakes/objc/LiveObjects.h"
#include "tests/platform/macos/fakes/objc/Runtime.h"

namespace corvane::objc {

namespace {

class PoolAroundTest final : public testing::EmptyTestEventListener {
public:
    void OnTestStart(const testing::TestInfo& /*test*/) override { pool_ = objc_autoreleasePoolPush(); }

    void OnTestEnd(const testing::TestInfo& /*test*/) override {
        objc_autoreleasePoolPop(pool_);
        emptyGraves();
    }

private:
    void* pool_ = nullptr;
};

}  // namespace

void watchTests() {
    failOnLeftovers("Objective-C objects", liveObjects);
    // The last one that is added hears first of a test's end.
    testing::UnitTest::GetInstance()->listeners().Append(std::make_unique<PoolAroundTest>().release());
}

}  // namespace corvane::objc
