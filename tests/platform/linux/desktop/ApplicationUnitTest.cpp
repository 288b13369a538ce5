#include <ostream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/desktop/ApplicationUnit.h"

namespace corvane {
namespace {

using testing::Optional;

/// The name of a unit, and the application's; none: "".
struct Case {
    const char* unit;
    const char* identifier;
};

std::ostream& operator<<(std::ostream& stream, const Case& test) {
    return stream << test.unit;
}

class ApplicationUnitTest : public testing::TestWithParam<Case> {};

TEST_P(ApplicationUnitTest, TellsTheApplication) {
    EXPECT_EQ(applicationOfUnit(GetParam().unit).value_or(""), GetParam().identifier);
}

INSTANTIATE_TEST_SUITE_P(
    Scopes, ApplicationUnitTest,
    testing::Values(Case{"app-org.kde.konsole-1f2e3d.scope", "org.kde.konsole"},
                    Case{"app-gnome-org.gnome.Terminal-4711.scope", "org.gnome.Terminal"},
                    Case{R"(app-gnome-firefox\x2desr-4711.scope)", "firefox-esr"},
                    Case{"app-gnome-firefox-esr-4711.scope", "firefox-esr"},
                    Case{"app-flatpak-org.mozilla.firefox-12345.scope", "org.mozilla.firefox"},
                    Case{"app-flatpak-io.github.some-one.App-12345.scope", "io.github.some-one.App"},
                    Case{R"(app-Hyprland-org.blender.Blender\x2d4-99.scope)", "org.blender.Blender-4"},
                    Case{"app-gnome-blender.desktop-12.scope", "blender"},
                    Case{R"(app-caf\xc3\xa9-12.scope)", "caf\xc3\xa9"}));

INSTANTIATE_TEST_SUITE_P(
    Services, ApplicationUnitTest,
    testing::Values(Case{"app-org.kde.kate@7a6b5c.service", "org.kde.kate"},
                    Case{R"(app-gnome\x2dkeyring\x2dssh@autostart.service)", "gnome-keyring-ssh"},
                    Case{"app-gnome-org.gnome.Maps@1.service", "org.gnome.Maps"},
                    Case{"app-KDE-org.kde.dolphin@1.service", "org.kde.dolphin"},
                    Case{"app-steam.service", "steam"}, Case{R"(app-a\x40b@1.service)", "a@b"},
                    Case{"dbus-:1.2-org.gnome.Nautilus@0.service", "org.gnome.Nautilus"},
                    Case{R"(dbus-:1.43-org.x.some\x2dthing@12.service)", "org.x.some-thing"}));

INSTANTIATE_TEST_SUITE_P(Others, ApplicationUnitTest,
                         testing::Values(Case{"", ""}, Case{"app-", ""}, Case{"app-.scope", ""},
                                         Case{"app--.scope", ""}, Case{"app--1.scope", ""},
                                         Case{"app-firefox.scope", ""}, Case{"app-firefox-.scope", ""},
                                         Case{"app-.service", ""}, Case{"app-@1.service", ""},
                                         Case{"app-org.x.Y.slice", ""}, Case{"app-org.x.Y-1.scope.d", ""},
                                         Case{"app.slice", ""}, Case{"application-x-1.scope", ""},
                                         Case{"xapp-org.x.Y-1.scope", ""}, Case{"dbus.service", ""},
                                         Case{"dbus-:1.2@1.service", ""}, Case{"dbus-:1.2-@1.service", ""},
                                         Case{"dbus-:1.2-org.x.Y.service", ""},
                                         Case{"vte-spawn-3f2a.scope", ""}, Case{"session-2.scope", ""}));

INSTANTIATE_TEST_SUITE_P(HostileNames, ApplicationUnitTest,
                         testing::Values(Case{R"(app-a\x2-1.scope)", ""}, Case{R"(app-a\x-1.scope)", ""},
                                         Case{R"(app-a\xg1-1.scope)", ""}, Case{R"(app-a\x+1-1.scope)", ""},
                                         Case{R"(app-a\-1.scope)", ""}, Case{R"(app-a\n00-1.scope)", ""},
                                         Case{R"(app-a\x00b-1.scope)", ""}, Case{R"(app-a\x0ab-1.scope)", ""},
                                         Case{R"(app-\x2e\x2e\x2fetc-1.scope)", ""},
                                         Case{R"(app-a\x7f-1.scope)", ""},
                                         Case{R"(app-\x2edesktop-1.scope)", ""},
                                         Case{"app-a/b-1.scope", ""}));

TEST(ApplicationUnit, PassesOverNamesThatNoUnitCanHave) {
    const std::string longest(240, 'a');
    EXPECT_THAT(applicationOfUnit("app-" + longest + "-1.scope"), Optional(longest));
    EXPECT_EQ(applicationOfUnit("app-" + std::string(100'000, 'a') + "-1.scope"), std::nullopt);
}

TEST(ApplicationUnit, IsFoundInTheControlGroup) {
    const std::string user = "/user.slice/user-1000.slice/user@1000.service/";
    EXPECT_THAT(applicationOfControlGroup(user + "app.slice/app-gnome-org.x.Y-12.scope"),
                Optional(std::string("org.x.Y")));
    EXPECT_THAT(applicationOfControlGroup(user + "app.slice/app-org.x.Y@1.service/worker"),
                Optional(std::string("org.x.Y")));
    EXPECT_EQ(applicationOfControlGroup(user + "app.slice/vte-spawn-1.scope"), std::nullopt);
    EXPECT_EQ(applicationOfControlGroup("/"), std::nullopt);
    EXPECT_EQ(applicationOfControlGroup(""), std::nullopt);
}

TEST(ApplicationUnit, OfTheInnermostGroupCounts) {
    EXPECT_THAT(applicationOfControlGroup("/app-outer-1.scope/app-inner-2.scope"),
                Optional(std::string("inner")));
}

}  // namespace
}  // namespace corvane
