#pragma once

#include <optional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/menu/MenuState.h"
#include "platform/simulated/SimulatedLoginItem.h"
#include "tests/app/session/SessionMachine.h"
#include "tests/support/SignalCount.h"

namespace corvane {

/// The application's models with the panel's state. Set up what they shall find, then start the models and
/// open the state.
class MenuMachine : public SessionMachine {
public:
    void openMenu() { menu.emplace(services()); }

    [[nodiscard]] MenuServices services() {
        return {.mainLoop = mainLoop,
                .manager = *manager,
                .powerSources = powerSources,
                .volumes = volumes,
                .defaults = defaults,
                .loginItem = loginItem,
                .lang = lang,
                .showSettings = [this] { ++settingsShown; },
                .showGuide = [this] { ++guidesShown; },
                .quit = [this] { ++quits; }};
    }

    void speakGerman() { defaults.set(Lang::setting, std::string("de")); }

    /// The poll goes on, with the record that the helper makes of this temperature once it has settled.
    void heatTo(float celsius) {
        helper.mac.holdSensorsAt(celsius);
        advance(20s);
    }

    SimulatedLoginItem loginItem;
    int settingsShown = 0;
    int guidesShown = 0;
    int quits = 0;
    std::optional<MenuState> menu;
};

/// A started machine with the panel's state, without a helper unless the test gives a temperature.
class MenuTest : public testing::Test {
protected:
    using Kind = SleepAssertions::Kind;
    using Kinds = SleepAssertions::Kinds;
    using Profile = CoolingProfile::Kind;

    MenuTest() {
        machine.startWithoutHelper();
        machine.openMenu();
    }
    explicit MenuTest(float celsius) {
        machine.start(celsius);
        machine.advance(20s);
        machine.openMenu();
    }

    SleepManager& manager() { return *machine.manager; }
    FanController& fan() { return machine.manager->fan(); }
    MenuState& menu() { return *machine.menu; }
    WallTime in(Duration duration) {
        return machine.wallTime() + std::chrono::duration_cast<WallTime::duration>(duration);
    }

    MenuMachine machine;
};

/// A menu test with a helper, at a temperature that asks for no cooling by itself.
class MenuFanTest : public MenuTest {
protected:
    MenuFanTest() : MenuTest(40) {}

    void switchOnManually() {
        fan().setCoolingMode(CoolingMode::manual);
        fan().setFansEnabled(true);
        machine.advance(2s);
    }
};

}  // namespace corvane
