#pragma once

// What every login item promises, as a suite that is run over each of them. A rig is made of:
//   LoginItem& item();
//   void breakDown();  // from now on changes fail

#include <gtest/gtest.h>

#include "platform/LoginItem.h"

namespace corvane {

template <typename Rig>
class LoginItemContract : public testing::Test {
protected:
    LoginItem& item() { return rig.item(); }

    Rig rig;
};

TYPED_TEST_SUITE_P(LoginItemContract);

TYPED_TEST_P(LoginItemContract, IsOffAtFirst) {
    EXPECT_FALSE(this->item().isEnabled());
}

TYPED_TEST_P(LoginItemContract, GoesOnAndOffAndStaysThere) {
    for (const bool on : {false, true, true, false, false, true}) {
        EXPECT_TRUE(this->item().setEnabled(on));
        EXPECT_EQ(this->item().isEnabled(), on);
    }
}

TYPED_TEST_P(LoginItemContract, StaysAsItIsWhenAChangeFails) {
    this->rig.breakDown();
    EXPECT_FALSE(this->item().setEnabled(true));
    EXPECT_FALSE(this->item().isEnabled());
    EXPECT_TRUE(this->item().setEnabled(false));
}

REGISTER_TYPED_TEST_SUITE_P(LoginItemContract, IsOffAtFirst, GoesOnAndOffAndStaysThere,
                            StaysAsItIsWhenAChangeFails);

}  // namespace corvane
