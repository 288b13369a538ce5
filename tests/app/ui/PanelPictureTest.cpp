#include <QDir>
#include <QImage>
#include <cstdlib>

#include <fmt/format.h>

#include "app/fan/FanSettings.h"
#include "tests/app/ui/PanelTest.h"

namespace corvane {
namespace {

struct Style {
    const char* language;
    bool isDark;
};

std::ostream& operator<<(std::ostream& out, const Style& style) {
    return out << style.language << (style.isDark ? " dark" : " light");
}

/// Pictures of the panel for people to look at, in the folder that CORVANE_SCREENSHOTS names. All that is
/// checked is that they can be kept.
class PanelPicture : public PanelTest, public testing::WithParamInterface<Style> {
protected:
    void SetUp() override {
        if (std::getenv("CORVANE_SCREENSHOTS") == nullptr) {
            GTEST_SKIP() << "CORVANE_SCREENSHOTS names no folder";
        }
        machine.look.setDark(GetParam().isDark);
        machine.speak(GetParam().language);
    }

    void keep(const char* name, double availableHeight = 2000) {
        show(availableHeight);
        waitForPopups();
        save(name);
    }
    void save(const char* name) {
        const QDir folder(qEnvironmentVariable("CORVANE_SCREENSHOTS"));
        const std::string file =
            fmt::format("{}-{}-{}.png", name, GetParam().language, GetParam().isDark ? "dark" : "light");
        EXPECT_TRUE(window->grabWindow().save(folder.filePath(QString::fromStdString(file)))) << file;
    }
    void installApplications() {
        machine.installed.set({{"blender", "Blender", "/usr/share/pixmaps/debian-logo.png"},
                               {"handbrake", "HandBrake", ""},
                               {"upload", "Nightly Upload", ""},
                               {"kdenlive", "Kdenlive", "no-such-icon"}});
    }
};

TEST_P(PanelPicture, OfAnIdleMac) {
    machine.openPanel(44);
    keep("idle");
}

TEST_P(PanelPicture, OfAllSectionsWithAManualBoost) {
    machine.powerSources.set(onBattery(18));
    machine.attach("Archive");
    machine.defaults.set(FanSettings::coolingMode, "manual");
    machine.defaults.set(MenuState::closedLidWarnedSetting, true);
    machine.openPanel(58);
    machine.client.setBody(
        R"({"shortVersion": "2.0", "version": "2", "url": "https://example.org/corvane"})");
    manager().updates().check();
    machine.menu->applySleepDuration(14400);
    manager().lid().setEnabled(true);
    manager().triggers().addApp({"blender", "Blender", CoolingProfile::Kind::balanced});
    manager().triggers().addApp({"upload", "Nightly Upload", std::nullopt});
    manager().triggers().setAutomationEnabled(true);
    manager().triggers().setKeepAwakeOnExternalDisplay(true);
    manager().drives().setEnabled(true);
    manager().drives().add({"/Volumes/Archive", "Archive"});
    manager().drives().add({"/Volumes/Gone", "Scratch"});
    fan().setFansEnabled(true);
    machine.menu->applyFanDuration(1800);
    machine.advance(3s);
    machine.menu->panelAppeared();
    keep("manual");
    keep("manual-low", 600);
}

TEST_P(PanelPicture, OfAutoCooling) {
    machine.powerSources.set(onMains(80));
    machine.defaults.set(FanSettings::coolingMode, "auto");
    machine.openPanel(48);
    fan().setFansEnabled(true);
    for (const float celsius : {52.0F, 60.0F, 66.0F, 63.0F, 71.0F}) {
        machine.heatTo(celsius);
    }
    machine.thermal.set(ThermalState::fair);
    machine.advance(2s);
    machine.menu->panelAppeared();
    keep("auto");
}

TEST_P(PanelPicture, OfAMacWithoutHelper) {
    machine.removeHelper();
    machine.openPanel();
    keep("no-helper");
}

TEST_P(PanelPicture, OfTheLidsQuestion) {
    machine.openPanel();
    machine.menu->setExpandLid(true);
    machine.menu->toggleClosedLid(true);
    keep("alert");
}

TEST_P(PanelPicture, OfThePicker) {
    installApplications();
    machine.openPanel();
    machine.menu->setExpandAuto(true);
    show();
    click("chooseApp");
    waitForPopups();
    save("picker");
}

TEST_P(PanelPicture, OfACustomEnd) {
    machine.openPanel();
    machine.menu->toggleAwake(true);
    machine.menu->setShowingCustomPicker(true);
    keep("custom-end");
}

INSTANTIATE_TEST_SUITE_P(InEveryStyle, PanelPicture,
                         testing::Values(Style{"en", false}, Style{"en", true}, Style{"de", false},
                                         Style{"de", true}));

}  // namespace
}  // namespace corvane
