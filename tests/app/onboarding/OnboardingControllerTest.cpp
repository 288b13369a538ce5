#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/onboarding/OnboardingController.h"
#include "platform/simulated/MemoryUserDefaults.h"
#include "platform/simulated/SimulatedActivationPolicy.h"
#include "platform/simulated/SimulatedLocale.h"
#include "platform/simulated/VirtualTime.h"
#include "tests/support/SignalCount.h"

namespace corvane {
namespace {

using std::chrono::hours;
using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

using Presence = ActivationPolicy::Presence;

/// A screen with at most one introduction on it.
struct Screen {
    int windowsMade = 0;
    int timesBroughtToFront = 0;
    /// While there is a window.
    OnboardingState* introduction = nullptr;
    std::function<void()> closeByUser;
};

class ScreenWindow final : public AppWindow {
public:
    ScreenWindow(Screen& screen, OnboardingState& introduction, std::function<void()> closed)
        : screen_(screen) {
        ++screen_.windowsMade;
        screen_.introduction = &introduction;
        screen_.closeByUser = std::move(closed);
    }
    ~ScreenWindow() override {
        screen_.introduction = nullptr;
        screen_.closeByUser = nullptr;
    }

    void bringToFront() override { ++screen_.timesBroughtToFront; }

private:
    Screen& screen_;
};

class OnboardingControllerTest : public testing::Test {
protected:
    OnboardingControllerTest() { start("1.0"); }

    /// The application starts in this version.
    void start(const char* version) {
        controller.emplace(OnboardingServices{
            .mainLoop = mainLoop,
            .defaults = defaults,
            .lang = lang,
            .presence = presence,
            .makeWindow =
                [this](OnboardingState& introduction, std::function<void()> closed) {
                    return std::make_unique<ScreenWindow>(screen, introduction, std::move(closed));
                },
            .version = version});
        controller->setOnFinished([this] { ++panelsOpened; });
    }

    [[nodiscard]] bool isShown() const { return screen.introduction != nullptr; }
    void finish() {
        ASSERT_TRUE(isShown());
        screen.introduction->finish();
        time.settle();
    }
    void close() {
        ASSERT_TRUE(isShown());
        mainLoop.async(screen.closeByUser);
        time.settle();
    }

    VirtualTime time;
    VirtualQueue mainLoop{time};
    MemoryUserDefaults defaults;
    SimulatedLocale locale;
    Lang lang{defaults, locale};
    SimulatedActivationPolicy policy;
    WindowPresence presence{policy};
    Screen screen;
    int panelsOpened = 0;
    std::optional<OnboardingController> controller;
};

TEST_F(OnboardingControllerTest, ShowsTheIntroductionAtTheFirstStart) {
    EXPECT_TRUE(controller->showIfFirstLaunch());
    ASSERT_TRUE(isShown());
    EXPECT_EQ(screen.introduction->page(), 0);
    EXPECT_EQ(screen.timesBroughtToFront, 1);
}

TEST_F(OnboardingControllerTest, HasAnOpenIntroductionFollowTheLanguage) {
    controller->retranslate();
    EXPECT_FALSE(isShown()) << "there is none";
    controller->show();
    const SignalCount changes(*screen.introduction, &OnboardingState::pagesChanged);
    controller->retranslate();
    EXPECT_EQ(changes.value(), 1);
}

TEST_F(OnboardingControllerTest, OpensThePanelAMomentAfterTheEnd) {
    controller->showIfFirstLaunch();
    finish();
    EXPECT_FALSE(isShown());
    time.advance(milliseconds(349));
    EXPECT_EQ(panelsOpened, 0);
    time.advance(milliseconds(1));
    EXPECT_EQ(panelsOpened, 1);
    time.advance(hours(1));
    EXPECT_EQ(panelsOpened, 1);
}

TEST_F(OnboardingControllerTest, DoesNotShowItAgainInTheSameVersion) {
    controller->showIfFirstLaunch();
    finish();
    start("1.0");
    EXPECT_FALSE(controller->showIfFirstLaunch());
    EXPECT_FALSE(isShown());
    EXPECT_EQ(screen.windowsMade, 1);
}

TEST_F(OnboardingControllerTest, ShowsItAgainInAnotherVersion) {
    controller->showIfFirstLaunch();
    finish();
    for (const char* version : {"1.1", "0.9"}) {
        start(version);
        EXPECT_TRUE(controller->showIfFirstLaunch()) << version;
    }
}

TEST_F(OnboardingControllerTest, RecordsTheVersionAtTheEnd) {
    controller->showIfFirstLaunch();
    EXPECT_THAT(defaults.writes(), IsEmpty());
    finish();
    EXPECT_THAT(defaults.writes(), ElementsAre(MemoryUserDefaults::Write{"onboardingSeenVersion", "1.0"}));
}

TEST_F(OnboardingControllerTest, ShowsItWhenWhatIsStoredIsNoVersion) {
    defaults.set("onboardingSeenVersion", 1.0);
    EXPECT_TRUE(controller->showIfFirstLaunch());
}

TEST_F(OnboardingControllerTest, RecordsNothingAndOpensNothingWhenItIsClosedBeforeTheEnd) {
    controller->showIfFirstLaunch();
    screen.introduction->advance(5);
    close();
    EXPECT_FALSE(isShown());
    time.advance(hours(1));
    EXPECT_EQ(panelsOpened, 0);
    EXPECT_THAT(defaults.writes(), IsEmpty());
    start("1.0");
    EXPECT_TRUE(controller->showIfFirstLaunch());
}

TEST_F(OnboardingControllerTest, IsShownOnDemandWhetherItWasSeenOrNot) {
    defaults.set("onboardingSeenVersion", std::string("1.0"));
    controller->show();
    EXPECT_TRUE(isShown());
}

TEST_F(OnboardingControllerTest, BringsAnOpenIntroductionToTheFrontAsItIs) {
    controller->show();
    screen.introduction->advance(3);
    controller->show();
    EXPECT_EQ(screen.windowsMade, 1);
    EXPECT_EQ(screen.timesBroughtToFront, 2);
    EXPECT_EQ(policy.activations(), 2);
    EXPECT_EQ(screen.introduction->page(), 3);
}

TEST_F(OnboardingControllerTest, BeginsAtTheFirstPageEachTime) {
    controller->show();
    screen.introduction->advance(3);
    close();
    controller->show();
    ASSERT_TRUE(isShown());
    EXPECT_EQ(screen.introduction->page(), 0);
    EXPECT_EQ(screen.windowsMade, 2);
}

TEST_F(OnboardingControllerTest, OpensNothingAfterAClosedOneThatFollowsAFinishedOne) {
    controller->show();
    finish();
    time.advance(hours(1));
    ASSERT_EQ(panelsOpened, 1);
    controller->show();
    close();
    time.advance(hours(1));
    EXPECT_EQ(panelsOpened, 1);
}

TEST_F(OnboardingControllerTest, OpensThePanelAfterEachEnd) {
    for (const int times : {1, 2}) {
        controller->show();
        finish();
        time.advance(hours(1));
        EXPECT_EQ(panelsOpened, times);
    }
}

TEST_F(OnboardingControllerTest, ClosesTheWindowOnlyOnceItsOwnCallIsOver) {
    controller->show();
    screen.introduction->finish();
    EXPECT_TRUE(isShown());
    time.settle();
    EXPECT_FALSE(isShown());
}

TEST_F(OnboardingControllerTest, TakesManyFinishingClicksForOne) {
    controller->show();
    screen.introduction->finish();
    screen.introduction->finish();
    time.settle();
    controller->show();
    time.settle();
    EXPECT_TRUE(isShown());
    time.advance(hours(1));
    EXPECT_EQ(panelsOpened, 1);
}

TEST_F(OnboardingControllerTest, CountsAsFinishedWhenTheUserClosesItAtTheSameMoment) {
    controller->show();
    mainLoop.async(screen.closeByUser);
    screen.introduction->finish();
    time.advance(milliseconds(350));
    EXPECT_FALSE(isShown());
    EXPECT_EQ(panelsOpened, 1);
}

TEST_F(OnboardingControllerTest, MakesTheApplicationARegularOneWhileItIsOpen) {
    controller->show();
    EXPECT_EQ(policy.presence(), Presence::regular);
    EXPECT_EQ(policy.activations(), 1);
    close();
    EXPECT_EQ(policy.presence(), Presence::accessory);
    controller->show();
    finish();
    EXPECT_EQ(policy.presence(), Presence::accessory);
}

TEST_F(OnboardingControllerTest, LeavesTheApplicationARegularOneWhileAnotherWindowIsOpen) {
    auto settings = presence.opened();
    controller->show();
    close();
    EXPECT_EQ(policy.presence(), Presence::regular);
    settings.reset();
    EXPECT_EQ(policy.presence(), Presence::accessory);
}

TEST_F(OnboardingControllerTest, KeepsTheApplicationARegularOneWhenAnotherWindowIsClosedFirst) {
    auto settings = presence.opened();
    controller->show();
    settings.reset();
    EXPECT_EQ(policy.presence(), Presence::regular);
    close();
    EXPECT_EQ(policy.presence(), Presence::accessory);
}

TEST_F(OnboardingControllerTest, OpensNothingWhenTheApplicationEndsFirst) {
    controller->show();
    finish();
    controller.reset();
    time.advance(hours(1));
    EXPECT_EQ(panelsOpened, 0);
}

TEST_F(OnboardingControllerTest, TakesAnOpenIntroductionAwayWhenTheApplicationEnds) {
    controller->show();
    screen.introduction->finish();
    controller.reset();
    EXPECT_FALSE(isShown());
    EXPECT_EQ(policy.presence(), Presence::accessory);
    time.advance(hours(1));
    EXPECT_EQ(panelsOpened, 0);
}

TEST_F(OnboardingControllerTest, NeedsNobodyWhoWaitsForItsEnd) {
    controller->setOnFinished(nullptr);
    controller->show();
    finish();
    time.advance(hours(1));
    EXPECT_FALSE(isShown());
}

}  // namespace
}  // namespace corvane
