#include "platform/macos/desktop/CoreGraphicsDisplays.h"
#include "platform/simulated/VirtualTime.h"
#include "tests/platform/DisplaysContract.h"
#include "tests/platform/macos/fakes/CoreGraphics/FakeDisplays.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::Optional;

constexpr FakeDisplays::FakeDisplay ownPanel{.id = 1, .isBuiltIn = true};
constexpr FakeDisplays::FakeDisplay firstMonitor{.id = 2, .isBuiltIn = false};
constexpr FakeDisplays::FakeDisplay secondMonitor{.id = 3, .isBuiltIn = false};

class CoreGraphicsDisplaysRig {
public:
    Displays& displays() { return displays_; }

    void set(const std::vector<Display>& displays) {
        std::vector<FakeDisplays::FakeDisplay> all;
        for (const Display& display : displays) {
            all.push_back(
                {.id = static_cast<CGDirectDisplayID>(all.size() + 1), .isBuiltIn = display.isBuiltIn});
        }
        windowServer_.set(std::move(all));
    }

    void fail() { windowServer_.failListing(0); }
    void settle() { time_.settle(); }

private:
    VirtualTime time_;
    VirtualQueue mainLoop_{time_};
    FakeDisplays windowServer_;
    CoreGraphicsDisplays displays_{mainLoop_};
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(CoreGraphics, DisplaysContract, CoreGraphicsDisplaysRig);

namespace {

class CoreGraphicsDisplaysTest : public testing::Test {
protected:
    std::unique_ptr<Observation> count() {
        return displays->observe([this] { ++changes; });
    }

    VirtualTime time;
    VirtualQueue mainLoop{time};
    FakeDisplays windowServer;
    std::unique_ptr<CoreGraphicsDisplays> displays = std::make_unique<CoreGraphicsDisplays>(mainLoop);
    int changes = 0;
};

TEST_F(CoreGraphicsDisplaysTest, AreNotKnownWhenOnlyTheirNumberIs) {
    windowServer.failListing(1);
    EXPECT_EQ(displays->online(), std::nullopt);
}

TEST_F(CoreGraphicsDisplaysTest, AreThoseThatAreLeftWhenOneGoesWhileTheyAreAskedFor) {
    windowServer.set({ownPanel, firstMonitor, secondMonitor});
    windowServer.changeAfterCounting({ownPanel});
    EXPECT_THAT(displays->online(), Optional(ElementsAre(Display{.isBuiltIn = true})));
}

TEST_F(CoreGraphicsDisplaysTest, TellOnTheMainLoopAfterwards) {
    const auto observation = count();
    windowServer.set({ownPanel, firstMonitor});
    EXPECT_EQ(changes, 0);
    time.settle();
    EXPECT_EQ(changes, 1);
}

TEST_F(CoreGraphicsDisplaysTest, TellNothingMoreOnceTheyHaveEnded) {
    const auto observation = count();
    windowServer.set({ownPanel, firstMonitor});
    displays.reset();
    time.settle();
    EXPECT_EQ(changes, 0);
}

TEST_F(CoreGraphicsDisplaysTest, TellOfAChangeThatAnObserverBringsAbout) {
    bool isFirst = true;
    const auto observation = displays->observe([&] {
        ++changes;
        if (std::exchange(isFirst, false)) {
            windowServer.set({ownPanel});
        }
    });
    windowServer.set({ownPanel, firstMonitor});
    time.settle();
    EXPECT_EQ(changes, 2);
}

}  // namespace
}  // namespace corvane
