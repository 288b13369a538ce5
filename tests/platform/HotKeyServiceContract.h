#pragma once

// What a HotKeyService promises that knows at once whether a key can be had, as a suite that is run over each
// of them. A rig is made of:
//   HotKeyService& service();
//   void press(char letter);   with Command and Option
//   void take(char letter);    another application has it from now on

#include <cstdint>
#include <memory>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/HotKeyService.h"

namespace corvane {

template <typename Rig>
class HotKeyServiceContract : public testing::Test {
protected:
    std::unique_ptr<HotKeyRegistration> add(std::uint32_t id, char letter) {
        return rig.service().add({.id = id,
                                  .letter = letter,
                                  .modifiers = HotKeyModifier::command + HotKeyModifier::option,
                                  .description = "What it does"},
                                 [this](std::uint32_t pressedId) { pressed.push_back(pressedId); });
    }

    Rig rig;
    std::vector<std::uint32_t> pressed;
};

TYPED_TEST_SUITE_P(HotKeyServiceContract);

TYPED_TEST_P(HotKeyServiceContract, TellsEachPressWithTheKeysId) {
    const auto keep = this->add(1, 'k');
    const auto fan = this->add(2, 'l');
    ASSERT_TRUE(keep && fan);
    this->rig.press('k');
    this->rig.press('l');
    this->rig.press('l');
    this->rig.press('m');
    EXPECT_THAT(this->pressed, testing::ElementsAre(1, 2, 2));
}

TYPED_TEST_P(HotKeyServiceContract, GivesAKeyBackWithItsRegistration) {
    auto keep = this->add(1, 'k');
    const auto fan = this->add(2, 'l');
    ASSERT_TRUE(keep && fan);
    keep.reset();
    this->rig.press('k');
    this->rig.press('l');
    EXPECT_THAT(this->pressed, testing::ElementsAre(2));
}

TYPED_TEST_P(HotKeyServiceContract, RegistersAKeyAfreshAndTellsOfItOnce) {
    auto key = this->add(1, 'k');
    ASSERT_TRUE(key);
    key.reset();
    key = this->add(1, 'k');
    ASSERT_TRUE(key);
    this->rig.press('k');
    EXPECT_THAT(this->pressed, testing::ElementsAre(1));
}

TYPED_TEST_P(HotKeyServiceContract, HasNoKeyThatAnotherApplicationHas) {
    this->rig.take('k');
    EXPECT_EQ(this->add(1, 'k'), nullptr);
    const auto fan = this->add(2, 'l');
    ASSERT_TRUE(fan);
    this->rig.press('k');
    this->rig.press('l');
    EXPECT_THAT(this->pressed, testing::ElementsAre(2));
}

REGISTER_TYPED_TEST_SUITE_P(HotKeyServiceContract, TellsEachPressWithTheKeysId,
                            GivesAKeyBackWithItsRegistration, RegistersAKeyAfreshAndTellsOfItOnce,
                            HasNoKeyThatAnotherApplicationHas);

}  // namespace corvane
