#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "platform/Lifetime.h"

namespace corvane {
namespace {

TEST(Lifetime, LetsWorkThatIsBoundToItRunWhileItLasts) {
    const Lifetime lifetime;
    std::string heard;
    const std::function<void(std::string, int)> work = lifetime.bound(
        [&heard](const std::string& text, int count) { heard += text + std::to_string(count); });
    work("one", 1);
    work("two", 2);
    EXPECT_EQ(heard, "one1two2");
}

TEST(Lifetime, LetsNothingRunOnceItIsOver) {
    std::optional<Lifetime> lifetime(std::in_place);
    int runs = 0;
    const std::function<void()> work = lifetime->bound([&runs] { ++runs; });
    const std::function<void()> copy = work;
    work();
    lifetime.reset();
    work();
    copy();
    lifetime.emplace();
    copy();
    EXPECT_EQ(runs, 1) << "another lifetime is none of its own";
}

TEST(Lifetime, MayEndInWorkThatIsBoundToIt) {
    std::optional<Lifetime> lifetime(std::in_place);
    std::string heard;
    const std::function<void()> work = lifetime->bound([&, text = std::string("still here")] {
        lifetime.reset();
        heard += text;
    });
    work();
    work();
    EXPECT_EQ(heard, "still here");
}

TEST(Lifetime, PassesOnWhatCannotBeCopied) {
    const Lifetime lifetime;
    int sum = 0;
    auto work = lifetime.bound(
        [&sum, own = std::make_unique<int>(1)](std::unique_ptr<int> handed) { sum = *own + *handed; });
    work(std::make_unique<int>(2));
    EXPECT_EQ(sum, 3);
}

}  // namespace
}  // namespace corvane
