#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/Observers.h"
#include "platform/simulated/SimulatedThermalState.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ObserversTest : public testing::Test {
protected:
    std::unique_ptr<Observation> note(const std::string& name) {
        return observers.add([this, name] { ran.push_back(name); });
    }

    std::vector<std::string> ran;
    Observers observers;
};

TEST_F(ObserversTest, RunInTheOrderTheyWereAdded) {
    const auto first = note("first");
    const auto second = note("second");
    EXPECT_THAT(ran, IsEmpty());
    observers.notify();
    observers.notify();
    EXPECT_THAT(ran, ElementsAre("first", "second", "first", "second"));
}

TEST_F(ObserversTest, RunNoMoreWhenTheObservationHasEnded) {
    auto first = note("first");
    const auto second = note("second");
    first.reset();
    observers.notify();
    EXPECT_THAT(ran, ElementsAre("second"));
}

TEST_F(ObserversTest, MayEndThemselvesWhileTheyRun) {
    std::unique_ptr<Observation> once;
    const std::string owned(100, 'x');
    once = observers.add([this, &once, owned] {
        once.reset();
        ran.push_back(owned);
    });
    const auto after = note("after");
    observers.notify();
    observers.notify();
    EXPECT_THAT(ran, ElementsAre(owned, "after", "after"));
}

TEST_F(ObserversTest, MayEndOthersBeforeTheyRun) {
    std::unique_ptr<Observation> victim;
    std::unique_ptr<Observation> earlier = note("earlier");
    const auto killer = observers.add([&] {
        ran.emplace_back("killer");
        victim.reset();
        earlier.reset();
    });
    victim = note("victim");
    observers.notify();
    observers.notify();
    EXPECT_THAT(ran, ElementsAre("earlier", "killer", "killer"));
}

TEST_F(ObserversTest, RunFromTheNextTimeOnWhenAddedMeanwhile) {
    std::vector<std::unique_ptr<Observation>> added;
    const auto adding = observers.add([&] { added.push_back(note("added")); });
    observers.notify();
    EXPECT_THAT(ran, IsEmpty());
    observers.notify();
    EXPECT_THAT(ran, ElementsAre("added"));
}

TEST_F(ObserversTest, MayOutliveWhatTheyObserve) {
    auto brief = std::make_unique<Observers>();
    auto observation = brief->add([] {});
    brief.reset();
    observation.reset();
}

TEST(SimulatedThermalState, AnnouncesChangesOnly) {
    SimulatedThermalState thermal;
    EXPECT_EQ(thermal.state(), ThermalState::nominal);
    std::vector<ThermalState> seen;
    auto observation = thermal.observe([&] { seen.push_back(thermal.state()); });
    thermal.set(ThermalState::nominal);
    thermal.set(ThermalState::serious);
    thermal.set(ThermalState::serious);
    thermal.set(ThermalState::fair);
    EXPECT_THAT(seen, ElementsAre(ThermalState::serious, ThermalState::fair));
    observation.reset();
    thermal.set(ThermalState::critical);
    EXPECT_EQ(seen.size(), 2U);
}

}  // namespace
}  // namespace corvane
