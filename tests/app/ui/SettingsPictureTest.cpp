#include <QDir>
#include <QImage>
#include <chrono>
#include <cstdlib>

#include <fmt/format.h>

#include "tests/app/ui/SettingsViewTest.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;

struct SettingsStyle {
    const char* language;
    bool isDark;
};

std::ostream& operator<<(std::ostream& out, const SettingsStyle& style) {
    return out << style.language << (style.isDark ? " dark" : " light");
}

/// Pictures of the settings window for people to look at, in the folder that CORVANE_SCREENSHOTS names. All
/// that is checked is that they can be kept.
class SettingsPicture : public SettingsViewTest, public testing::WithParamInterface<SettingsStyle> {
protected:
    void SetUp() override {
        if (std::getenv("CORVANE_SCREENSHOTS") == nullptr) {
            GTEST_SKIP() << "CORVANE_SCREENSHOTS names no folder";
        }
        look.setDark(GetParam().isDark);
        speak(GetParam().language);
        open();
    }

    void keep(const char* name) {
        const QDir folder(qEnvironmentVariable("CORVANE_SCREENSHOTS"));
        const std::string file = fmt::format("settings-{}-{}-{}.png", name, GetParam().language,
                                             GetParam().isDark ? "dark" : "light");
        EXPECT_TRUE(view().grabWindow().save(folder.filePath(QString::fromStdString(file)))) << file;
    }
};

TEST_P(SettingsPicture, OfTheWholeWindow) {
    keep("top");
    machine.client.setBody(R"({"shortVersion":"2.0"})");
    click("checkForUpdates");
    keep("update");
    for (int i = 0; i < 4; ++i) {
        press(Qt::Key_Tab);
    }
    keep("bottom");
}

TEST_P(SettingsPicture, OfTheNewestVersion) {
    click("checkForUpdates");
    advance(2s);
    keep("newest");
}

TEST_P(SettingsPicture, OfTheRestart) {
    click("language/system");
    keep("restart");
}

TEST_P(SettingsPicture, OfTheRemoval) {
    askToUninstall();
    keep("uninstall");
    click("alertAccept");
    keep("busy");
    endRemoval(InstallResult::failure("Das Programm /usr/bin/pkexec fehlt."));
    keep("failed");
    press(Qt::Key_Return);
    beginRemoval();
    endRemoval(InstallResult::success());
    keep("removed");
}

INSTANTIATE_TEST_SUITE_P(InEveryStyle, SettingsPicture,
                         testing::Values(SettingsStyle{"en", false}, SettingsStyle{"en", true},
                                         SettingsStyle{"de", false}, SettingsStyle{"de", true}));

}  // namespace
}  // namespace corvane
