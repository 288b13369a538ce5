#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/shell/Hotkeys.h"
#include "platform/simulated/MemoryUserDefaults.h"
#include "platform/simulated/SimulatedHotKeyService.h"
#include "platform/simulated/SimulatedLocale.h"
#include "platform/simulated/VirtualTime.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Action = Hotkeys::Action;

class HotkeysTest : public testing::Test {
protected:
    HotkeysTest() {
        hotkeys.emplace(service, mainLoop, lang);
        hotkeys->setHandler([this](Action action) { actions.push_back(action); });
    }

    std::vector<Action> pressed(char letter) {
        service.press(letter);
        time.settle();
        return std::exchange(actions, {});
    }

    VirtualTime time;
    VirtualQueue mainLoop{time};
    MemoryUserDefaults defaults;
    SimulatedLocale locale;
    Lang lang{defaults, locale};
    SimulatedHotKeyService service;
    std::optional<Hotkeys> hotkeys;
    std::vector<Action> actions;
};

TEST_F(HotkeysTest, AreNotRegisteredAtFirst) {
    EXPECT_THAT(service.registered(), IsEmpty());
    EXPECT_THAT(pressed('k'), IsEmpty());
}

TEST_F(HotkeysTest, RegisterKAndLWithCommandAndOption) {
    hotkeys->setEnabled(true);
    EXPECT_THAT(service.registered(), ElementsAre(HotKey{1, 'k', 0x0900, "Keep awake", 0x44424B41},
                                                  HotKey{2, 'l', 0x0900, "Fan boost", 0x44424641}));
}

TEST_F(HotkeysTest, AreDescribedInTheUsersLanguage) {
    locale.prefer({"de-DE"});
    hotkeys->setEnabled(true);
    ASSERT_EQ(service.registered().size(), 2U);
    EXPECT_EQ(service.registered()[0].description, "Wach bleiben");
    EXPECT_EQ(service.registered()[1].description, "Lüfter-Boost");
}

TEST_F(HotkeysTest, DeliverTheActionOfTheKeyThatWasPressed) {
    hotkeys->setEnabled(true);
    EXPECT_THAT(pressed('k'), ElementsAre(Action::toggleKeepAwake));
    EXPECT_THAT(pressed('l'), ElementsAre(Action::toggleFanBoost));
}

TEST_F(HotkeysTest, DeliverAfterTheEventWasHandled) {
    hotkeys->setEnabled(true);
    service.press('k');
    EXPECT_THAT(actions, IsEmpty());
    time.settle();
    EXPECT_THAT(actions, ElementsAre(Action::toggleKeepAwake));
}

TEST_F(HotkeysTest, MayBeSwitchedOffByTheirOwnAction) {
    hotkeys->setHandler([this](Action /*action*/) { hotkeys->setEnabled(false); });
    hotkeys->setEnabled(true);
    service.press('k');
    time.settle();
    EXPECT_THAT(service.registered(), IsEmpty());
}

TEST_F(HotkeysTest, EnabledTwiceAreRegisteredOnce) {
    hotkeys->setEnabled(true);
    hotkeys->setEnabled(true);
    EXPECT_EQ(service.attempts(), 2);
    EXPECT_THAT(pressed('k'), ElementsAre(Action::toggleKeepAwake));
}

TEST_F(HotkeysTest, DisabledDeliverNothing) {
    hotkeys->setEnabled(true);
    hotkeys->setEnabled(false);
    hotkeys->setEnabled(false);
    EXPECT_THAT(service.registered(), IsEmpty());
    EXPECT_THAT(pressed('k'), IsEmpty());
}

TEST_F(HotkeysTest, DisabledAndEnabledAgainAreRegisteredAfreshAndActOncePerPress) {
    hotkeys->setEnabled(true);
    hotkeys->setEnabled(false);
    hotkeys->setEnabled(true);
    EXPECT_EQ(service.attempts(), 4);
    EXPECT_EQ(service.registered().size(), 2U);
    EXPECT_THAT(pressed('k'), ElementsAre(Action::toggleKeepAwake));
    EXPECT_THAT(pressed('l'), ElementsAre(Action::toggleFanBoost));
}

TEST_F(HotkeysTest, LeaveTheOtherKeyWorkingWhenOneIsTaken) {
    service.take('k');
    hotkeys->setEnabled(true);
    EXPECT_THAT(pressed('k'), IsEmpty());
    EXPECT_THAT(pressed('l'), ElementsAre(Action::toggleFanBoost));
    hotkeys->setEnabled(false);
    EXPECT_THAT(service.registered(), IsEmpty());
}

TEST_F(HotkeysTest, IgnoreKeysThatTheyDoNotKnow) {
    hotkeys->setEnabled(true);
    for (const std::uint32_t unknown : {0U, 3U, 0xFFFF'FFFFU}) {
        service.pressUnknown(unknown);
    }
    time.settle();
    EXPECT_THAT(actions, IsEmpty());
}

TEST_F(HotkeysTest, IgnorePressesWithoutAHandler) {
    hotkeys->setHandler(nullptr);
    hotkeys->setEnabled(true);
    EXPECT_THAT(pressed('k'), IsEmpty());
}

TEST_F(HotkeysTest, GiveTheKeysBackAndDropWhatIsOnItsWayWhenTheyEnd) {
    hotkeys->setEnabled(true);
    service.press('k');
    hotkeys.reset();
    EXPECT_THAT(service.registered(), IsEmpty());
    time.settle();
    EXPECT_THAT(actions, IsEmpty());
}

}  // namespace
}  // namespace corvane
