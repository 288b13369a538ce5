#pragma once

#include <utility>

#include <gtest/gtest.h>

namespace corvane {

/// Which fake stands for a framework right now, for the framework's functions to find; a member of the fake,
/// of which there is one at a time. Without any, the computer has nothing of that kind.
template <typename Fake>
class Current {
public:
    explicit Current(Fake& fake) {
        EXPECT_EQ(std::exchange(standing(), &fake), nullptr) << "two fakes stand for the same framework";
    }
    Current(const Current&) = delete;
    Current& operator=(const Current&) = delete;
    ~Current() { standing() = nullptr; }

    [[nodiscard]] static Fake* get() { return standing(); }

private:
    static Fake*& standing() {
        static Fake* fake = nullptr;
        return fake;
    }
};

}  // namespace corvane
