#include "tests/platform/macos/fakes/Leftovers.h"

#include <cstddef>
#include <memory>
#include <utility>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

namespace corvane {

namespace {

/// Looks before and after each test. Things may end in another order than they came: it counts them.
class LeftoverListener final : public testing::EmptyTestEventListener {
public:
    LeftoverListener(std::string what, LiveThings alive) : what_(std::move(what)), alive_(std::move(alive)) {}

    void OnTestStart(const testing::TestInfo& /*test*/) override { before_ = alive_().size(); }

    void OnTestEnd(const testing::TestInfo& /*test*/) override {
        const std::vector<std::string> after = alive_();
        if (after.size() > before_) {
            ADD_FAILURE() << fmt::format("{} {} were left behind, of these: {}", after.size() - before_,
                                         what_, fmt::join(after, ", "));
        }
    }

private:
    std::string what_;
    LiveThings alive_;
    std::size_t before_ = 0;
};

}  // namespace

void failOnLeftovers(std::string what, LiveThings alive) {
    testing::UnitTest::GetInstance()->listeners().Append(
        std::make_unique<LeftoverListener>(std::move(what), std::move(alive)).release());
}

}  // namespace corvane
