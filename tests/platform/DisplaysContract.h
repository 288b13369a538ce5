#pragma once

// What Displays promise where the system tells of them at once, as a suite that is run over each of them. A
// rig is made of:
//   Displays& displays();             the computer's own panel to begin with
//   void set(std::vector<Display>);   announced
//   void fail();                      from now on the system does not tell
//   void settle();                    lets everything run that is due

#include <memory>
#include <optional>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/Displays.h"

namespace corvane {

template <typename Rig>
class DisplaysContract : public testing::Test {
protected:
    static constexpr Display panel{.isBuiltIn = true};
    static constexpr Display monitor{.isBuiltIn = false};

    Displays& displays() { return rig.displays(); }
    void set(const std::vector<Display>& displays) {
        rig.set(displays);
        rig.settle();
    }

    Rig rig;
};

TYPED_TEST_SUITE_P(DisplaysContract);

TYPED_TEST_P(DisplaysContract, AreThoseOnlineNow) {
    using testing::ElementsAre;
    using testing::IsEmpty;
    using testing::Optional;
    EXPECT_THAT(this->displays().online(), Optional(ElementsAre(this->panel)));
    this->set({this->panel, this->monitor, this->monitor});
    EXPECT_THAT(this->displays().online(), Optional(ElementsAre(this->panel, this->monitor, this->monitor)));
    this->set({this->monitor});
    EXPECT_THAT(this->displays().online(), Optional(ElementsAre(this->monitor)));
    this->set({});
    EXPECT_THAT(this->displays().online(), Optional(IsEmpty()));
}

TYPED_TEST_P(DisplaysContract, AreNotKnownWhenTheSystemDoesNotTell) {
    this->rig.fail();
    EXPECT_EQ(this->displays().online(), std::nullopt);
}

TYPED_TEST_P(DisplaysContract, TellOnceOfAChangeAfterIt) {
    std::vector<std::size_t> counts;
    const auto observation =
        this->displays().observe([&] { counts.push_back(this->displays().online().value().size()); });
    EXPECT_THAT(counts, testing::IsEmpty());
    this->set({this->panel, this->monitor, this->monitor});
    EXPECT_THAT(counts, testing::ElementsAre(3));
    this->set({this->panel});
    EXPECT_THAT(counts, testing::ElementsAre(3, 1));
}

TYPED_TEST_P(DisplaysContract, TellEachObserverUntilItEnds) {
    int first = 0;
    int second = 0;
    auto one = this->displays().observe([&] { ++first; });
    const auto other = this->displays().observe([&] { ++second; });
    this->set({this->panel, this->monitor});
    one.reset();
    this->set({this->panel});
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 2);
}

REGISTER_TYPED_TEST_SUITE_P(DisplaysContract, AreThoseOnlineNow, AreNotKnownWhenTheSystemDoesNotTell,
                            TellOnceOfAChangeAfterIt, TellEachObserverUntilItEnds);

}  // namespace corvane
