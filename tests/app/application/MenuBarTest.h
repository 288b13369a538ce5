#pragma once

#include <chrono>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "app/application/Application.h"
#include "app/application/MenuBar.h"
#include "app/shell/BuildInfo.h"
#include "tests/app/application/RecordingViews.h"
#include "tests/app/application/TestAppPlatform.h"

namespace corvane {

/// The whole application on virtual time, after its start with what the test has put in its settings.
class MenuBarTest : public testing::Test {
protected:
    void start() {
        if (wasIntroduced) {
            platform.storedAtFirst["onboardingSeenVersion"] = std::string(BuildInfo::version);
        }
        application.emplace(platform);
        menuBar.emplace(platform, *application, shown.views());
        menuBar->start();
        settle();
    }
    /// An application that has been started before, so that the panel does not open by itself.
    void startAgain() {
        platform.storedAtFirst["lastLaunchedBuild"] = std::string(BuildInfo::buildNumber);
        start();
        platform.helper.advance(2s);
    }
    void settle() { platform.helper.advance(1ms); }

    SleepManager& manager() { return application->manager(); }
    SimulatedStatusItem& item() { return *platform.statusItem; }
    /// The entry with this label; fails the test without one.
    StatusMenuEntry entry(const std::string& label) {
        for (const StatusMenuEntry& found : item().menu()) {
            if (found.label == label) {
                return found;
            }
        }
        ADD_FAILURE() << "no entry " << label;
        return {};
    }
    void choose(const std::string& label) {
        item().choose(entry(label).id);
        settle();
    }

    /// The user has seen the introduction of this version.
    bool wasIntroduced = true;
    TestAppPlatform platform;
    /// Outlives the application.
    RecordingViews shown;
    std::optional<Application> application;
    std::optional<MenuBar> menuBar;
};

}  // namespace corvane
