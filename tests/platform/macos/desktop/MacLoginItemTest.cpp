#include <gmock/gmock.h>

#include "platform/macos/desktop/MacLoginItem.h"
#include "platform/simulated/RecordingLog.h"
#include "tests/platform/LoginItemContract.h"
#include "tests/platform/macos/fakes/ServiceManagement/FakeLoginItems.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MacLoginItemRig {
public:
    LoginItem& item() { return item_; }
    void breakDown() { system_.fail("The operation could not be completed."); }

private:
    FakeLoginItems system_;
    RecordingLog log_;
    MacLoginItem item_{log_};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Mac, LoginItemContract, MacLoginItemRig);

class MacLoginItemTest : public testing::Test {
protected:
    using Status = FakeLoginItems::Status;

    FakeLoginItems system;
    RecordingLog log;
    MacLoginItem item{log};
};

TEST_F(MacLoginItemTest, IsOnInOneStateAlone) {
    for (const Status status : {Status::notRegistered, Status::requiresApproval, Status::notFound}) {
        system.set(status);
        EXPECT_FALSE(item.isEnabled());
    }
    system.set(Status::enabled);
    EXPECT_TRUE(item.isEnabled());
}

TEST_F(MacLoginItemTest, TouchesNothingWhereItIsSoAlready) {
    system.set(Status::enabled);
    EXPECT_TRUE(item.setEnabled(true));
    for (const Status status : {Status::notRegistered, Status::notFound}) {
        system.set(status);
        EXPECT_TRUE(item.setEnabled(false));
    }
    EXPECT_EQ(system.changes(), 0);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(MacLoginItemTest, TakesAwayWhatWaitsForApproval) {
    system.set(Status::requiresApproval);
    EXPECT_TRUE(item.setEnabled(false));
    EXPECT_EQ(system.status(), Status::notRegistered);
}

TEST_F(MacLoginItemTest, IsNotOnBeforeTheUserHasApprovedIt) {
    system.askForApproval();
    EXPECT_FALSE(item.setEnabled(true));
    EXPECT_THAT(log.lines(), ElementsAre("Corvane login-item toggle failed: the user has not approved it in "
                                         "the system's settings"));
}

TEST_F(MacLoginItemTest, LogsTheSystemsErrors) {
    system.fail("Operation not permitted");
    EXPECT_FALSE(item.setEnabled(true));
    system.set(Status::enabled);
    EXPECT_FALSE(item.setEnabled(false));
    EXPECT_THAT(log.lines(), ElementsAre("Corvane login-item toggle failed: Operation not permitted",
                                         "Corvane login-item toggle failed: Operation not permitted"));
}

TEST_F(MacLoginItemTest, LogsAnErrorWithoutWords) {
    system.fail(std::nullopt);
    EXPECT_FALSE(item.setEnabled(true));
    EXPECT_THAT(log.lines(), ElementsAre("Corvane login-item toggle failed: unknown error"));
}

}  // namespace
}  // namespace corvane
