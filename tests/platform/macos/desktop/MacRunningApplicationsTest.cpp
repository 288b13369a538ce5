#include <memory>
#include <optional>

#include "platform/macos/desktop/MacRunningApplications.h"
#include "platform/simulated/VirtualTime.h"
#include "tests/platform/RunningApplicationsContract.h"
#include "tests/platform/macos/fakes/AppKit/FakeWorkspace.h"
#include "tests/platform/macos/fakes/dispatch/FakeDispatch.h"

namespace corvane {
namespace {

using testing::ElementsAre;

class MacRunningApplicationsRig {
public:
    RunningApplications& applications() { return applications_; }
    void start(const std::string& identifier) { workspace_.launch(identifier); }
    void quit(const std::string& identifier) { workspace_.quit(identifier); }
    void settle() { time_.settle(); }

private:
    VirtualTime time_;
    FakeDispatch dispatch_{time_};
    FakeWorkspace workspace_;
    MacRunningApplications applications_{dispatch_.mainQueue()};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Mac, RunningApplicationsContract, MacRunningApplicationsRig);

class MacRunningApplicationsTest : public testing::Test {
protected:
    VirtualTime time;
    FakeDispatch dispatch{time};
    FakeWorkspace workspace;
    std::unique_ptr<MacRunningApplications> applications =
        std::make_unique<MacRunningApplications>(dispatch.mainQueue());
    int changes = 0;
};

TEST_F(MacRunningApplicationsTest, LeaveOutWhatHasNoIdentifier) {
    workspace.launch(std::nullopt);
    workspace.launch("org.example.render");
    workspace.launch(std::nullopt);
    EXPECT_THAT(applications->identifiers(), ElementsAre("org.example.render"));
}

TEST_F(MacRunningApplicationsTest, AreEachThereOnceHoweverOftenTheyRun) {
    workspace.launch("org.example.render");
    workspace.launch("org.example.render");
    EXPECT_THAT(applications->identifiers(), ElementsAre("org.example.render"));
    workspace.quit("org.example.render");
    EXPECT_THAT(applications->identifiers(), ElementsAre("org.example.render"));
}

TEST_F(MacRunningApplicationsTest, AreSilentOnceTheyAreGoneThoughANoticeIsOnItsWay) {
    const auto observation = applications->observe([this] { ++changes; });
    workspace.launch("org.example.render");
    applications.reset();
    time.settle();
    EXPECT_EQ(changes, 0);
}

TEST_F(MacRunningApplicationsTest, MayEndWhileTheyAnnounce) {
    const auto observation = applications->observe([this] { applications.reset(); });
    workspace.launch("org.example.render");
    workspace.launch("org.example.upload");
    time.settle();
    EXPECT_EQ(applications, nullptr);
}

}  // namespace
}  // namespace corvane
