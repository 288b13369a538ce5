#include <limits>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/onboarding/OnboardingState.h"
#include "platform/simulated/MemoryUserDefaults.h"
#include "platform/simulated/SimulatedLocale.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class OnboardingStateTest : public testing::Test {
protected:
    OnboardingStateTest() {
        note(&OnboardingState::pageChanged, "page");
        note(&OnboardingState::goingForwardChanged, "direction");
        note(&OnboardingState::pagesChanged, "pages");
        note(&OnboardingState::finished, "finished");
    }

    void note(void (OnboardingState::*announcement)(), const char* name) {
        QObject::connect(&state, announcement, &state, [this, name] { announced.emplace_back(name); });
    }

    MemoryUserDefaults defaults;
    SimulatedLocale locale;
    Lang lang{defaults, locale};
    OnboardingState state{lang};
    std::vector<std::string> announced;
};

TEST_F(OnboardingStateTest, BeginsAtTheFirstPage) {
    EXPECT_EQ(state.page(), 0);
    EXPECT_TRUE(state.isFirst());
    EXPECT_FALSE(state.isLast());
    EXPECT_TRUE(state.goingForward());
}

TEST_F(OnboardingStateTest, GoesThroughAllPagesAndNoFurther) {
    for (const int page : {1, 2, 3, 4, 5, 5}) {
        state.advance(1);
        EXPECT_EQ(state.page(), page);
        EXPECT_FALSE(state.isFirst());
    }
    EXPECT_TRUE(state.isLast());
}

TEST_F(OnboardingStateTest, GoesBackToTheFirstPageAndNoFurther) {
    state.advance(5);
    for (const int page : {4, 3, 2, 1, 0, 0}) {
        state.advance(-1);
        EXPECT_EQ(state.page(), page);
        EXPECT_FALSE(state.isLast());
    }
    EXPECT_TRUE(state.isFirst());
}

TEST_F(OnboardingStateTest, StaysWithinThePagesHoweverFarItIsToGo) {
    state.advance(3);
    state.advance(std::numeric_limits<int>::max());
    EXPECT_EQ(state.page(), 5);
    state.advance(std::numeric_limits<int>::min());
    EXPECT_EQ(state.page(), 0);
}

TEST_F(OnboardingStateTest, KnowsTheDirectionOfTheLastStep) {
    state.advance(2);
    EXPECT_TRUE(state.goingForward());
    state.advance(-1);
    EXPECT_FALSE(state.goingForward());
    state.advance(1);
    EXPECT_TRUE(state.goingForward());
    state.advance(0);
    EXPECT_FALSE(state.goingForward());
}

TEST_F(OnboardingStateTest, AnnouncesTheDirectionBeforeThePage) {
    state.advance(1);
    EXPECT_THAT(announced, ElementsAre("page"));
    announced.clear();
    state.advance(-1);
    EXPECT_THAT(announced, ElementsAre("direction", "page"));
}

TEST_F(OnboardingStateTest, AnnouncesNoPageWhenThereIsNoneToGoTo) {
    state.advance(-1);
    state.advance(-1);
    EXPECT_THAT(announced, ElementsAre("direction"));
}

TEST_F(OnboardingStateTest, TellsThatItWasSeenToItsEnd) {
    state.finish();
    EXPECT_THAT(announced, ElementsAre("finished"));
}

TEST_F(OnboardingStateTest, SpeaksTheLanguageOfTheMomentAndTellsOfAChange) {
    EXPECT_EQ(state.pages().at(4).title, "Thinks along\nwith you");
    defaults.set(Lang::setting, std::string("de"));
    EXPECT_THAT(announced, IsEmpty());
    state.retranslate();
    EXPECT_THAT(announced, ElementsAre("pages"));
    EXPECT_EQ(state.pages().at(4).title, "Denkt für\ndich mit");
}

}  // namespace
}  // namespace corvane
