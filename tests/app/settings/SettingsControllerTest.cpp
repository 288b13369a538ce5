#include <functional>
#include <utility>

#include "app/settings/SettingsController.h"
#include "platform/simulated/SimulatedActivationPolicy.h"
#include "tests/app/settings/SettingsMachine.h"

namespace corvane {
namespace {

using Alert = SettingsState::Alert;
using Presence = ActivationPolicy::Presence;

/// What windows do to the test.
struct WindowNotes {
    int made = 0;
    int shown = 0;
    int existing = 0;
    SettingsState* state = nullptr;
    std::function<void()> closed;
};

/// A window that nobody sees.
class NotedWindow final : public AppWindow {
public:
    explicit NotedWindow(WindowNotes& notes) : notes_(notes) {
        ++notes_.made;
        ++notes_.existing;
    }
    ~NotedWindow() override {
        --notes_.existing;
        // The state outlives the window.
        EXPECT_EQ(notes_.state->version(), "1.9");
    }

    void bringToFront() override { ++notes_.shown; }

private:
    WindowNotes& notes_;
};

class SettingsControllerTest : public testing::Test {
protected:
    void close() {
        std::exchange(notes.closed, nullptr)();
        machine.time.settle();
    }
    void beginRemoval() {
        notes.state->askToUninstall();
        notes.state->confirmUninstall();
    }
    void endRemoval(const InstallResult& result) {
        machine.uninstaller.finish(result);
        machine.time.settle();
    }

    SettingsMachine machine;
    SimulatedActivationPolicy policy;
    WindowPresence presence{policy};
    WindowNotes notes;
    std::optional<SettingsController> controller{std::in_place, machine.services(), presence,
                                                 [this](SettingsState& state, std::function<void()> closed) {
                                                     notes.state = &state;
                                                     notes.closed = std::move(closed);
                                                     return std::make_unique<NotedWindow>(notes);
                                                 }};
};

TEST_F(SettingsControllerTest, HasNoWindowAtFirst) {
    EXPECT_FALSE(controller->isOpen());
    EXPECT_EQ(notes.made, 0);
    EXPECT_EQ(policy.presence(), Presence::accessory);
}

TEST_F(SettingsControllerTest, OpensItsWindowInFrontAsARegularApplication) {
    controller->show();
    EXPECT_TRUE(controller->isOpen());
    EXPECT_EQ(notes.made, 1);
    EXPECT_EQ(notes.shown, 1);
    EXPECT_EQ(policy.presence(), Presence::regular);
    EXPECT_EQ(policy.activations(), 1);
}

TEST_F(SettingsControllerTest, HasOneWindowWhoeverOpensItAgain) {
    controller->show();
    controller->show();
    EXPECT_EQ(notes.made, 1);
    EXPECT_EQ(notes.shown, 2);
    EXPECT_EQ(policy.activations(), 2);
}

TEST_F(SettingsControllerTest, ForgetsTheWindowThatWasClosed) {
    controller->show();
    close();
    EXPECT_FALSE(controller->isOpen());
    EXPECT_EQ(notes.existing, 0);
    EXPECT_EQ(policy.presence(), Presence::accessory);
    EXPECT_EQ(machine.quits, 0);
    controller->show();
    EXPECT_EQ(notes.made, 2);
    EXPECT_EQ(policy.presence(), Presence::regular);
}

TEST_F(SettingsControllerTest, StaysRegularWhileAnotherWindowIsOpen) {
    controller->show();
    auto other = presence.opened();
    close();
    EXPECT_EQ(policy.presence(), Presence::regular);
    other.reset();
    EXPECT_EQ(policy.presence(), Presence::accessory);
}

TEST_F(SettingsControllerTest, LooksAfreshForEachWindow) {
    controller->show();
    notes.state->checkForUpdates();
    close();
    machine.loginItem.setEnabled(true);
    controller->show();
    EXPECT_TRUE(notes.state->launchAtLogin());
    EXPECT_FALSE(notes.state->checkedOnce());
    EXPECT_FALSE(notes.state->checking());
}

TEST_F(SettingsControllerTest, EndsWithAWindowOpen) {
    controller->show();
    controller.reset();
    EXPECT_EQ(notes.existing, 0);
    EXPECT_EQ(policy.presence(), Presence::accessory);
    close();
}

TEST_F(SettingsControllerTest, TellsOfARemovalInItsWindow) {
    controller->show();
    beginRemoval();
    endRemoval(InstallResult::success());
    EXPECT_EQ(notes.made, 1);
    EXPECT_EQ(notes.shown, 1);
    EXPECT_EQ(notes.state->alert(), Alert::removed);
}

TEST_F(SettingsControllerTest, QuitsWhenTheWindowIsClosedAfterTheRemoval) {
    controller->show();
    beginRemoval();
    endRemoval(InstallResult::success());
    close();
    EXPECT_EQ(machine.quits, 1);
}

TEST_F(SettingsControllerTest, GoesOnWithTheRemovalWhenTheWindowIsClosedAndOpensItToSayGoodbye) {
    controller->show();
    beginRemoval();
    close();
    EXPECT_FALSE(controller->isOpen());
    endRemoval(InstallResult::success());
    EXPECT_EQ(machine.uninstaller.clearings(), 1);
    EXPECT_TRUE(controller->isOpen());
    EXPECT_EQ(notes.shown, 2);
    EXPECT_EQ(notes.state->alert(), Alert::removed);
    notes.state->sayGoodbye();
    EXPECT_EQ(machine.quits, 1);
}

TEST_F(SettingsControllerTest, OpensAgainToTellWhyTheRemovalFailed) {
    controller->show();
    beginRemoval();
    close();
    endRemoval(InstallResult::failure("no"));
    EXPECT_TRUE(controller->isOpen());
    EXPECT_EQ(notes.state->alert(), Alert::uninstallFailed);
    EXPECT_EQ(notes.state->uninstallError(), "no");
    EXPECT_EQ(policy.presence(), Presence::regular);
}

TEST_F(SettingsControllerTest, StaysClosedWhenThePromptIsDismissedAfterTheWindow) {
    controller->show();
    beginRemoval();
    close();
    endRemoval(InstallResult::cancelled());
    EXPECT_FALSE(controller->isOpen());
    EXPECT_EQ(policy.presence(), Presence::accessory);
    controller->show();
    EXPECT_FALSE(notes.state->isRemoving());
    beginRemoval();
    EXPECT_EQ(machine.uninstaller.prompts(), 2);
}

TEST_F(SettingsControllerTest, ShowsTheRemovalUnderWayWhenItIsOpenedAgain) {
    controller->show();
    beginRemoval();
    close();
    controller->show();
    EXPECT_EQ(notes.made, 2);
    EXPECT_TRUE(notes.state->isRemoving());
    beginRemoval();
    EXPECT_EQ(machine.uninstaller.prompts(), 1);
    endRemoval(InstallResult::failure("no"));
    EXPECT_EQ(notes.made, 2);
    EXPECT_EQ(notes.state->alert(), Alert::uninstallFailed);
}

TEST_F(SettingsControllerTest, MayEndDuringARemoval) {
    controller->show();
    beginRemoval();
    controller.reset();
    endRemoval(InstallResult::success());
    EXPECT_EQ(machine.uninstaller.clearings(), 0);
    EXPECT_EQ(machine.quits, 0);
}

}  // namespace
}  // namespace corvane
