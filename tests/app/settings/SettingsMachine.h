#pragma once

#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/settings/SettingsState.h"
#include "app/shell/Lang.h"
#include "platform/simulated/MemoryUserDefaults.h"
#include "platform/simulated/RecordingUrlOpener.h"
#include "platform/simulated/SimulatedHttpsClient.h"
#include "platform/simulated/SimulatedLocale.h"
#include "platform/simulated/SimulatedLoginItem.h"
#include "platform/simulated/SimulatedRelauncher.h"
#include "platform/simulated/SimulatedUninstaller.h"
#include "platform/simulated/VirtualTime.h"

namespace corvane {

/// Everything that the settings touch, simulated, on virtual time. Set up what they shall find first.
class SettingsMachine {
public:
    SettingsMachine() { configureUpdates("https://corvane.example/appcast.json"); }

    /// Empty: there is no feed.
    void configureUpdates(const std::string& feedUrl) {
        updates.emplace(
            UpdateCheckerServices{client, opener},
            UpdateCheckerConfiguration{
                .feedUrl = feedUrl, .homePage = "https://corvane.example/", .currentVersion = "1.9"});
    }

    [[nodiscard]] SettingsServices services() {
        return {.mainLoop = mainLoop,
                .defaults = defaults,
                .loginItem = loginItem,
                .updates = *updates,
                .opener = opener,
                .uninstaller = uninstaller,
                .relauncher = relauncher,
                .enableHotkeys = [this](bool on) { hotkeys.push_back(on); },
                .showIntroduction = [this] { ++introductions; },
                .retranslateOthers = [this] { ++retranslations; },
                .withdraw =
                    [this] {
                        EXPECT_EQ(uninstaller.clearings(), 0) << "what can still be used leaves traces again";
                        ++withdrawals;
                    },
                .quit = [this] { ++quits; },
                .version = "1.9",
                .supportMail = supportMail};
    }

    VirtualTime time;
    VirtualQueue mainLoop{time};
    MemoryUserDefaults defaults;
    SimulatedLocale locale;
    Lang lang{defaults, locale};
    SimulatedLoginItem loginItem;
    SimulatedHttpsClient client{mainLoop};
    RecordingUrlOpener opener;
    std::optional<UpdateChecker> updates;
    SimulatedUninstaller uninstaller;
    SimulatedRelauncher relauncher;
    std::string supportMail = "help@corvane.example";

    /// What the hot keys were told.
    std::vector<bool> hotkeys;
    int introductions = 0;
    int retranslations = 0;
    int withdrawals = 0;
    int quits = 0;
};

}  // namespace corvane
