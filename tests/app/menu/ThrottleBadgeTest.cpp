#include <string>

#include <gtest/gtest.h>

#include "app/menu/ThrottleBadge.h"
#include "platform/simulated/MemoryUserDefaults.h"
#include "platform/simulated/SimulatedLocale.h"

namespace corvane {
namespace {

class ThrottleBadgeTest : public testing::Test {
protected:
    void expectBadge(ThermalState state, const char* german, const char* english, const char* role) {
        for (const char* label : {german, english}) {
            defaults.set(Lang::setting, std::string(label == german ? "de" : "en"));
            const auto badge = ThrottleBadge::infoFor(state, lang);
            ASSERT_TRUE(badge);
            EXPECT_STREQ(badge->label, label);
            EXPECT_STREQ(badge->role, role);
        }
    }

    MemoryUserDefaults defaults;
    SimulatedLocale locale;
    Lang lang{defaults, locale};
};

TEST_F(ThrottleBadgeTest, IsNotThereWhileTheStateIsNominal) {
    EXPECT_FALSE(ThrottleBadge::infoFor(ThermalState::nominal, lang));
}

TEST_F(ThrottleBadgeTest, NamesEachHigherState) {
    expectBadge(ThermalState::fair, "Last erhöht", "Elevated", "yellow");
    expectBadge(ThermalState::serious, "Drosselung", "Throttling", "orange");
    expectBadge(ThermalState::critical, "Kritisch", "Critical", "red");
}

}  // namespace
}  // namespace corvane
