#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/simulated/Scenario.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;

Surroundings right(std::string_view text) {
    auto parsed = parseScenario(text);
    if (const auto* error = std::get_if<ScenarioError>(&parsed)) {
        ADD_FAILURE() << error->line << ": " << error->what;
        return {};
    }
    return std::get<Scenario>(parsed).surroundings;
}

std::string wrong(std::string_view text) {
    const auto parsed = parseScenario(text);
    const auto* error = std::get_if<ScenarioError>(&parsed);
    if (error == nullptr) {
        ADD_FAILURE() << "taken as right: " << text;
        return {};
    }
    return error->what;
}

TEST(Surroundings, AreThoseOfADesktopMacUnlessTheFileSaysOtherwise) {
    const Surroundings surroundings = right("load = 40\n");
    EXPECT_EQ(surroundings.battery, std::nullopt);
    EXPECT_TRUE(surroundings.onMains);
    EXPECT_EQ(surroundings.thermalState, ThermalState::nominal);
    EXPECT_THAT(surroundings.displays, ElementsAre(Display{.isBuiltIn = true}));
    EXPECT_THAT(surroundings.applications, IsEmpty());
    EXPECT_THAT(surroundings.drives, IsEmpty());
}

TEST(Surroundings, AreReadFromTheFile) {
    const Surroundings surroundings = right(
        "battery = 12\n"
        "power = battery\n"
        "thermal = serious\n"
        "displays = built-in external\texternal   # three\n"
        "application.org.blender.Blender = running\n"
        "application.org.kde.krita = running\n"
        "drive.Backup = mounted\n"
        "drive.My old disk = hangs\n");
    EXPECT_EQ(surroundings.battery, 12);
    EXPECT_FALSE(surroundings.onMains);
    EXPECT_EQ(surroundings.thermalState, ThermalState::serious);
    EXPECT_THAT(surroundings.displays, ElementsAre(Display{true}, Display{false}, Display{false}));
    EXPECT_THAT(surroundings.applications, ElementsAre("org.blender.Blender", "org.kde.krita"));
    EXPECT_THAT(surroundings.drives, ElementsAre(Pair("Backup", Surroundings::Drive::answers),
                                                 Pair("My old disk", Surroundings::Drive::hangs)));
}

TEST(Surroundings, AreWhatTheLastLineOfANameSays) {
    const Surroundings surroundings = right(
        "battery = 12\nbattery = none\n"
        "power = battery\npower = mains\n"
        "thermal = critical\nthermal = fair\n"
        "displays = external\ndisplays = none\n"
        "application.a = running\napplication.a = stopped\napplication.b = stopped\n"
        "drive.a = mounted\ndrive.a = unmounted\ndrive.b = hangs\ndrive.b = mounted\n");
    EXPECT_EQ(surroundings, (Surroundings{.battery = std::nullopt,
                                          .onMains = true,
                                          .thermalState = ThermalState::fair,
                                          .displays = {},
                                          .applications = {},
                                          .drives = {{"b", Surroundings::Drive::answers}}}));
}

TEST(Surroundings, OfAnotherKindAreRefusedWithTheValuesThereAre) {
    EXPECT_EQ(wrong("battery = 101"), "battery is none or 0 to 100 (percent), not \"101\"");
    EXPECT_EQ(wrong("battery = 12.5"), "battery is none or 0 to 100 (percent), not \"12.5\"");
    EXPECT_EQ(wrong("power = solar"), "power is mains or battery, not \"solar\"");
    EXPECT_EQ(wrong("thermal = hot"), "thermal is nominal, fair, serious or critical, not \"hot\"");
    EXPECT_EQ(wrong("displays = external, external"),
              "displays are none, or each built-in or external, not \"external,\"");
    EXPECT_EQ(wrong("application.a = yes"), "an application is running or stopped, not \"yes\"");
    EXPECT_EQ(wrong("drive.a = slow"), "a drive is mounted, hangs or unmounted, not \"slow\"");
    for (const char* nameless : {"application. = running", "drive. = mounted"}) {
        EXPECT_THAT(wrong(nameless), HasSubstr("nothing is called")) << nameless;
    }
}

}  // namespace
}  // namespace corvane
