#include "app/shell/Hotkeys.h"
#include "platform/macos/desktop/CarbonHotKeys.h"
#include "platform/simulated/MemoryUserDefaults.h"
#include "platform/simulated/SimulatedLocale.h"
#include "platform/simulated/VirtualTime.h"
#include "tests/platform/HotKeyServiceContract.h"
#include "tests/platform/macos/fakes/Carbon/FakeHotKeys.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr UInt32 commandOption = 0x0900;
constexpr UInt32 placeOfK = 40;
constexpr UInt32 placeOfL = 37;
constexpr UInt32 placeOfM = 46;

class CarbonHotKeysRig {
public:
    HotKeyService& service() { return service_; }
    void press(char letter) { keyboard_.press(placeOf(letter), commandOption); }
    void take(char letter) { keyboard_.take(placeOf(letter), commandOption); }

private:
    static UInt32 placeOf(char letter) {
        return letter == 'k' ? placeOfK : letter == 'l' ? placeOfL : placeOfM;
    }

    FakeHotKeys keyboard_;
    CarbonHotKeys service_;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Carbon, HotKeyServiceContract, CarbonHotKeysRig);

namespace {

const HotKey keepAwakeKey{1, 'k', commandOption, "Keep awake"};
constexpr auto ignorePress = [](std::uint32_t /*id*/) {};

TEST(CarbonHotKeys, ListenFromTheFirstKeyUntilTheirEnd) {
    const FakeHotKeys keyboard;
    {
        CarbonHotKeys keys;
        EXPECT_EQ(keyboard.handlers(), 0U);
        auto key = keys.add(keepAwakeKey, ignorePress);
        key.reset();
        key = keys.add(keepAwakeKey, ignorePress);
        EXPECT_EQ(keyboard.handlers(), 1U);
    }
    EXPECT_EQ(keyboard.handlers(), 0U);
}

TEST(CarbonHotKeys, LeaveAPressThatIsNobodysToOthers) {
    FakeHotKeys keyboard;
    CarbonHotKeys keys;
    const auto key = keys.add(keepAwakeKey, ignorePress);
    EXPECT_TRUE(keyboard.press(placeOfK, commandOption));
    EXPECT_FALSE(keyboard.pressUnknown(7));
    EXPECT_EQ(keyboard.sendWithoutId(), eventParameterNotFoundErr);
}

TEST(CarbonHotKeys, AreNoneWithoutAHandler) {
    FakeHotKeys keyboard;
    keyboard.refuseHandlers();
    CarbonHotKeys keys;
    EXPECT_EQ(keys.add(keepAwakeKey, ignorePress), nullptr);
    EXPECT_THAT(keyboard.registered(), IsEmpty());
}

TEST(CarbonHotKeys, AreLettersOnly) {
    const FakeHotKeys keyboard;
    CarbonHotKeys keys;
    for (const char letter : {'\0', 'K', '1', '{', '`'}) {
        EXPECT_EQ(keys.add({1, letter, commandOption, ""}, ignorePress), nullptr);
    }
}

/// What the application makes of it.
class HotkeysOverCarbon : public testing::Test {
protected:
    HotkeysOverCarbon() {
        hotkeys.setHandler([this](Hotkeys::Action action) { actions.push_back(action); });
    }

    void press(UInt32 place) {
        keyboard.press(place, commandOption);
        time.settle();
    }

    VirtualTime time;
    VirtualQueue mainLoop{time};
    MemoryUserDefaults defaults;
    SimulatedLocale locale;
    Lang lang{defaults, locale};
    FakeHotKeys keyboard;
    CarbonHotKeys service;
    Hotkeys hotkeys{service, mainLoop, lang};
    std::vector<Hotkeys::Action> actions;
};

TEST_F(HotkeysOverCarbon, RegisterTheirPlacesModifiersSignaturesAndIds) {
    hotkeys.setEnabled(true);
    EXPECT_THAT(keyboard.registered(), ElementsAre(FakeHotKeys::Registered{40, 0x0900, 0x44424B41, 1},
                                                   FakeHotKeys::Registered{37, 0x0900, 0x44424641, 2}));
    hotkeys.setEnabled(false);
    EXPECT_THAT(keyboard.registered(), IsEmpty());
}

TEST_F(HotkeysOverCarbon, DeliverEachPressOnceAlsoAfterTheyWereDisabled) {
    hotkeys.setEnabled(true);
    hotkeys.setEnabled(false);
    hotkeys.setEnabled(true);
    press(placeOfK);
    press(placeOfL);
    EXPECT_THAT(actions, ElementsAre(Hotkeys::Action::toggleKeepAwake, Hotkeys::Action::toggleFanBoost));
}

TEST_F(HotkeysOverCarbon, WorkWhereOneOfThemIsTaken) {
    keyboard.take(placeOfK, commandOption);
    hotkeys.setEnabled(true);
    press(placeOfK);
    press(placeOfL);
    EXPECT_THAT(actions, ElementsAre(Hotkeys::Action::toggleFanBoost));
}

}  // namespace
}  // namespace corvane
