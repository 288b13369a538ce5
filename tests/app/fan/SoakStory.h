#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <utility>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace corvane {

/// What happened in a life, for whoever has to find out why it went wrong.
class SoakStory {
public:
    /// The seconds lived awake.
    [[nodiscard]] int second() const { return second_; }
    void nextSecond() { ++second_; }

    template <typename... Args>
    void tell(fmt::format_string<Args...> format, Args&&... args) {
        const std::string deed = fmt::format(format, std::forward<Args>(args)...);
        deeds_.push_back(fmt::format("second {}: {}", second_, deed));
        if (deeds_.size() > deedsTold) {
            deeds_.pop_front();
        }
    }

    /// Fails the test.
    void fail(const std::string& what) const {
        std::string story;
        for (const std::string& deed : deeds_) {
            story += fmt::format("\n  {}", deed);
        }
        ADD_FAILURE() << fmt::format("second {}: {}; last deeds:{}", second_, what, story);
    }

private:
    /// What was done last is told with a failure.
    static constexpr std::size_t deedsTold = 20;

    int second_ = 0;
    std::deque<std::string> deeds_;
};

}  // namespace corvane
