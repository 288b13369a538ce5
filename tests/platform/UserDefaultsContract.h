#pragma once

// What all user defaults promise, as a suite that is run over each of them. A rig is made of:
//   UserDefaults& defaults();

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/UserDefaults.h"

namespace corvane {

template <typename Rig>
class UserDefaultsContract : public testing::Test {
protected:
    UserDefaults& defaults() { return rig.defaults(); }

    Rig rig;
};

TYPED_TEST_SUITE_P(UserDefaultsContract);

TYPED_TEST_P(UserDefaultsContract, HasNothingUnderAnUnknownKey) {
    EXPECT_EQ(this->defaults().value("unknown"), std::nullopt);
}

TYPED_TEST_P(UserDefaultsContract, GivesBackEveryTypeAsItWasSet) {
    const std::vector<DefaultsValue> values = {true,
                                               false,
                                               std::int64_t{0},
                                               std::numeric_limits<std::int64_t>::min(),
                                               std::numeric_limits<std::int64_t>::max(),
                                               0.0,
                                               1.0,
                                               -1e18,
                                               0.1,
                                               std::numeric_limits<double>::max(),
                                               std::numeric_limits<double>::denorm_min(),
                                               "",
                                               "1",
                                               "Lüfter \"🔥\" \n\\",
                                               std::string("with\0zero", 9),
                                               std::vector<std::byte>{},
                                               std::vector<std::byte>{std::byte{0}, std::byte{255}}};
    for (const DefaultsValue& value : values) {
        this->defaults().set("key", value);
        EXPECT_EQ(this->defaults().value("key"), value) << testing::PrintToString(value);
    }
}

TYPED_TEST_P(UserDefaultsContract, ConvertsNoTypeIntoAnother) {
    this->defaults().set("key", 1.0);
    EXPECT_EQ(this->defaults().template get<double>("key"), 1.0);
    EXPECT_EQ(this->defaults().template get<std::int64_t>("key"), std::nullopt);
    EXPECT_EQ(this->defaults().template get<bool>("key"), std::nullopt);
    this->defaults().set("key", std::int64_t{1});
    EXPECT_EQ(this->defaults().template get<std::int64_t>("key"), 1);
    EXPECT_EQ(this->defaults().template get<double>("key"), std::nullopt);
    this->defaults().set("key", std::string("true"));
    EXPECT_EQ(this->defaults().template get<bool>("key"), std::nullopt);
}

TYPED_TEST_P(UserDefaultsContract, ForgetsWhatIsRemovedAndNothingElse) {
    this->defaults().set("one", true);
    this->defaults().set("two", false);
    this->defaults().remove("one");
    this->defaults().remove("unknown");
    EXPECT_EQ(this->defaults().value("one"), std::nullopt);
    EXPECT_EQ(this->defaults().value("two"), DefaultsValue(false));
}

TYPED_TEST_P(UserDefaultsContract, RefusesRealsThatAreNotFinite) {
    this->defaults().set("key", 2.5);
    this->defaults().set("key", std::numeric_limits<double>::quiet_NaN());
    this->defaults().set("key", std::numeric_limits<double>::infinity());
    EXPECT_EQ(this->defaults().value("key"), DefaultsValue(2.5));
}

TYPED_TEST_P(UserDefaultsContract, ForgetsEverythingAtOnce) {
    this->defaults().set("one", true);
    this->defaults().set("two", std::string("text"));
    this->defaults().removeAll();
    EXPECT_EQ(this->defaults().value("one"), std::nullopt);
    EXPECT_EQ(this->defaults().value("two"), std::nullopt);
}

TYPED_TEST_P(UserDefaultsContract, HoldsWithoutKeepingItWhatIsSetAfterEverythingWasRemoved) {
    UserDefaults& defaults = this->defaults();
    defaults.set("key", true);
    defaults.removeAll();
    defaults.set("key", false);
    EXPECT_EQ(defaults.value("key"), DefaultsValue(false));
    defaults.remove("key");
    EXPECT_EQ(defaults.value("key"), std::nullopt);
    defaults.removeAll();
}

REGISTER_TYPED_TEST_SUITE_P(UserDefaultsContract, HasNothingUnderAnUnknownKey, GivesBackEveryTypeAsItWasSet,
                            ConvertsNoTypeIntoAnother, ForgetsWhatIsRemovedAndNothingElse,
                            RefusesRealsThatAreNotFinite, ForgetsEverythingAtOnce,
                            HoldsWithoutKeepingItWhatIsSetAfterEverythingWasRemoved);

}  // namespace corvane
