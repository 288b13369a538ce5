#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "app/menu/TemperatureScale.h"
#include "platform/simulated/MemoryUserDefaults.h"
#include "platform/simulated/SimulatedLocale.h"

namespace corvane {
namespace {

class TemperatureScaleTest : public testing::Test {
protected:
    void expectWord(double celsius, const char* german, const char* english) {
        defaults.set(Lang::setting, std::string("de"));
        EXPECT_STREQ(TemperatureScale::word(celsius, lang), german) << celsius;
        defaults.set(Lang::setting, std::string("en"));
        EXPECT_STREQ(TemperatureScale::word(celsius, lang), english) << celsius;
    }

    MemoryUserDefaults defaults;
    SimulatedLocale locale;
    Lang lang{defaults, locale};
};

TEST_F(TemperatureScaleTest, GivesALimitTheHotterWord) {
    expectWord(-10, "kühl", "cool");
    expectWord(39.99, "kühl", "cool");
    expectWord(40, "ok", "ok");
    expectWord(54.99, "ok", "ok");
    expectWord(55, "warm", "warm");
    expectWord(69.99, "warm", "warm");
    expectWord(70, "heiß", "hot");
    expectWord(81.99, "heiß", "hot");
    expectWord(82, "kritisch", "critical");
    expectWord(110, "kritisch", "critical");
}

TEST_F(TemperatureScaleTest, GivesALimitTheHotterColour) {
    const std::vector<std::pair<double, const char*>> colours = {
        {-10, "green"},    {49.99, "green"}, {50, "lime"},     {64.99, "lime"}, {65, "orange"},
        {74.99, "orange"}, {75, "ember"},    {84.99, "ember"}, {85, "red"},     {110, "red"}};
    for (const auto& [celsius, role] : colours) {
        EXPECT_STREQ(TemperatureScale::colorRole(celsius), role) << celsius;
    }
}

}  // namespace
}  // namespace corvane
