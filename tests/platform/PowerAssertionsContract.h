#pragma once

// What PowerAssertions promise where an assertion is taken at once, as a suite that is run over each of them.
// A rig is made of:
//   PowerAssertions& assertions();
//   std::vector<std::pair<std::string, std::string>> held();   type and name of each, in the order they were
//   taken void refuse();                                             from now on nothing can be taken

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/PowerAssertions.h"

namespace corvane {

template <typename Rig>
class PowerAssertionsContract : public testing::Test {
protected:
    PowerAssertions& assertions() { return rig.assertions(); }

    Rig rig;
};

TYPED_TEST_SUITE_P(PowerAssertionsContract);

TYPED_TEST_P(PowerAssertionsContract, AreHeldFromCreationToReleaseByTypeAndName) {
    using Held = std::pair<std::string, std::string>;
    const auto system =
        this->assertions().create(PowerAssertions::preventUserIdleSystemSleep, "one \"name\"");
    const auto display =
        this->assertions().create(PowerAssertions::preventUserIdleDisplaySleep, "Bildschirm ü");
    const auto network = this->assertions().create(PowerAssertions::networkClientActive, "");
    ASSERT_TRUE(system && display && network);
    EXPECT_THAT(this->rig.held(), testing::ElementsAre(Held("PreventUserIdleSystemSleep", "one \"name\""),
                                                       Held("PreventUserIdleDisplaySleep", "Bildschirm ü"),
                                                       Held("NetworkClientActive", "")));
    this->assertions().release(*display);
    EXPECT_THAT(this->rig.held(), testing::ElementsAre(Held("PreventUserIdleSystemSleep", "one \"name\""),
                                                       Held("NetworkClientActive", "")));
    this->assertions().release(*system);
    this->assertions().release(*network);
    EXPECT_THAT(this->rig.held(), testing::IsEmpty());
}

TYPED_TEST_P(PowerAssertionsContract, AreHeldAsOftenAsTheyWereTaken) {
    const auto one = this->assertions().create(PowerAssertions::preventUserIdleSystemSleep, "same");
    const auto other = this->assertions().create(PowerAssertions::preventUserIdleSystemSleep, "same");
    ASSERT_TRUE(one && other);
    EXPECT_NE(*one, *other);
    this->assertions().release(*one);
    EXPECT_EQ(this->rig.held().size(), 1U);
    this->assertions().release(*other);
    EXPECT_THAT(this->rig.held(), testing::IsEmpty());
}

TYPED_TEST_P(PowerAssertionsContract, PassOverTheReleaseOfWhatIsNotHeld) {
    const auto held = this->assertions().create(PowerAssertions::preventUserIdleSystemSleep, "held");
    ASSERT_TRUE(held);
    this->assertions().release(*held + 1);
    EXPECT_EQ(this->rig.held().size(), 1U);
    this->assertions().release(*held);
    this->assertions().release(*held);
    EXPECT_THAT(this->rig.held(), testing::IsEmpty());
}

TYPED_TEST_P(PowerAssertionsContract, AreNoneWhenTheyAreRefused) {
    this->rig.refuse();
    EXPECT_EQ(this->assertions().create(PowerAssertions::preventUserIdleSystemSleep, "refused"),
              std::nullopt);
    EXPECT_THAT(this->rig.held(), testing::IsEmpty());
}

REGISTER_TYPED_TEST_SUITE_P(PowerAssertionsContract, AreHeldFromCreationToReleaseByTypeAndName,
                            AreHeldAsOftenAsTheyWereTaken, PassOverTheReleaseOfWhatIsNotHeld,
                            AreNoneWhenTheyAreRefused);

}  // namespace corvane
