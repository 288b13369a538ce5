#include <QPalette>
#include <map>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "platform/linux/gui/DesktopAppearance.h"
#include "tests/platform/linux/gui/GuiLoop.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/FakeSettingsPortal.h"
#include "tests/support/PrivateBus.h"

namespace corvane {
namespace {

constexpr std::uint32_t noPreference = 0;
constexpr std::uint32_t dark = 1;
constexpr std::uint32_t light = 2;

/// A private bus stands in for the session's.
class DesktopAppearanceTest : public testing::Test {
protected:
    void SetUp() override {
        if (bus.problem()) {
            GTEST_SKIP() << *bus.problem();
        }
        setWindows(Qt::white);
    }

    static void setWindows(const QColor& color) {
        QPalette palette;
        palette.setColor(QPalette::Window, color);
        QGuiApplication::setPalette(palette);
    }

    void begin() {
        appearance.emplace(busThread, loop.queue(), [this](const char* name) {
            const auto found = variables.find(name);
            return found == variables.end() ? nullptr : found->second.c_str();
        });
        observation = appearance->observe([this] { ++changes; });
    }

    bool becomes(bool isDark) {
        return loop.runUntil([&] { return appearance->isDark() == isDark; });
    }

    /// Lets what is under way arrive: the portal's answer to the bus thread, its news to the main loop.
    void settle() {
        for (int round = 0; round < 2; ++round) {
            Notes<int> done;
            busThread.post([&] { done.add(0); });
            ASSERT_TRUE(done.waitFor(1));
            QCoreApplication::processEvents();
        }
    }

    GuiLoop loop;
    PrivateBus bus;
    /// Not handed over: the library leaks when it cannot connect to an address that it is given.
    const EnvironmentVariable sessionBus{"DBUS_SESSION_BUS_ADDRESS", bus.address().c_str()};
    std::map<std::string, std::string> variables;
    int changes = 0;
    BusThread busThread;
    std::optional<DesktopAppearance> appearance;
    std::unique_ptr<Observation> observation;
};

TEST_F(DesktopAppearanceTest, FollowsThePortal) {
    FakeSettingsPortal portal(bus.address(), sdbus::Variant(dark));
    begin();
    EXPECT_FALSE(appearance->isDark()) << "nobody waits for the answer";
    ASSERT_TRUE(becomes(true));
    EXPECT_EQ(changes, 1);
    portal.set(sdbus::Variant(light));
    ASSERT_TRUE(becomes(false));
    portal.set(sdbus::Variant(dark));
    ASSERT_TRUE(becomes(true));
    EXPECT_EQ(changes, 3);
}

TEST_F(DesktopAppearanceTest, UnderstandsAValueThatIsWrappedOnceMore) {
    const FakeSettingsPortal portal(bus.address(), sdbus::Variant(sdbus::Variant(dark)));
    begin();
    EXPECT_TRUE(becomes(true));
}

TEST_F(DesktopAppearanceTest, FollowsAPortalThatComesLaterAndForgetsOneThatGoes) {
    begin();
    settle();
    EXPECT_FALSE(appearance->isDark());
    std::optional<FakeSettingsPortal> portal(std::in_place, bus.address(), sdbus::Variant(dark));
    ASSERT_TRUE(becomes(true));
    portal.reset();
    EXPECT_TRUE(becomes(false));
}

TEST_F(DesktopAppearanceTest, PrefersLightOverDarkWindowsWhenThePortalDoes) {
    setWindows(Qt::black);
    const FakeSettingsPortal portal(bus.address(), sdbus::Variant(light));
    begin();
    EXPECT_TRUE(appearance->isDark());
    EXPECT_TRUE(becomes(false));
}

TEST_F(DesktopAppearanceTest, HasTheThemesLookWithoutAPreference) {
    FakeSettingsPortal portal(bus.address(), sdbus::Variant(dark));
    begin();
    ASSERT_TRUE(becomes(true));
    for (const sdbus::Variant& unusable : {sdbus::Variant(noPreference), sdbus::Variant(std::uint32_t{7}),
                                           sdbus::Variant(std::string("1")), sdbus::Variant(1.0)}) {
        portal.set(unusable);
        EXPECT_TRUE(becomes(false));
        portal.set(sdbus::Variant(dark));
        EXPECT_TRUE(becomes(true));
    }
}

TEST_F(DesktopAppearanceTest, HasTheThemesLookWithoutAPortal) {
    setWindows(Qt::black);
    begin();
    EXPECT_TRUE(appearance->isDark());
    setWindows(QColor(200, 200, 200));
    EXPECT_FALSE(appearance->isDark());
}

TEST_F(DesktopAppearanceTest, ReadsTheNameOfTheToolkitsTheme) {
    begin();
    for (const char* theme : {"Adwaita:dark", "Adwaita-dark", "Arc-Dark"}) {
        variables["GTK_THEME"] = theme;
        EXPECT_TRUE(appearance->isDark()) << theme;
    }
    setWindows(Qt::black);
    variables["GTK_THEME"] = "Adwaita";
    EXPECT_FALSE(appearance->isDark());
}

TEST_F(DesktopAppearanceTest, ObeysItsVariableAboveAll) {
    FakeSettingsPortal portal(bus.address(), sdbus::Variant(dark));
    variables["CORVANE_APPEARANCE"] = "light";
    variables["GTK_THEME"] = "Adwaita:dark";
    begin();
    settle();
    EXPECT_FALSE(appearance->isDark());
    EXPECT_EQ(changes, 0);
    variables["CORVANE_APPEARANCE"] = "dark";
    portal.set(sdbus::Variant(light));
    begin();
    settle();
    EXPECT_TRUE(appearance->isDark());
}

TEST_F(DesktopAppearanceTest, TakesNoNoticeOfAVariableThatSaysSomethingElse) {
    variables["CORVANE_APPEARANCE"] = "purple";
    const FakeSettingsPortal portal(bus.address(), sdbus::Variant(dark));
    begin();
    EXPECT_TRUE(becomes(true));
}

TEST_F(DesktopAppearanceTest, SurvivesABusThatGoes) {
    begin();
    bus.end();
    settle();
    EXPECT_FALSE(appearance->isDark());
}

TEST_F(DesktopAppearanceTest, SurvivesWithoutABus) {
    const EnvironmentVariable none("DBUS_SESSION_BUS_ADDRESS", "unix:path=/no/such/bus");
    begin();
    settle();
    EXPECT_FALSE(appearance->isDark());
}

}  // namespace
}  // namespace corvane
