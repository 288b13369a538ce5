#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/desktop/MacTrash.h"
#include "tests/platform/macos/fakes/Foundation/FakeTrash.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MacTrashTest : public testing::Test {
protected:
    const TemporaryFolder folder;
    FakeTrash system;
    MacTrash trash;
};

TEST_F(MacTrashTest, TakesAFolderWithEverythingInIt) {
    static_cast<void>(folder.write("Cörvane's.app/Contents/Info.plist", "text"));
    trash.moveThere(folder / "Cörvane's.app");
    EXPECT_THAT(folder.names(), IsEmpty());
    EXPECT_THAT(system.contents(), ElementsAre((folder / "Cörvane's.app").string()));
}

TEST_F(MacTrashTest, DoesNothingWhereNothingIs) {
    trash.moveThere(folder / "missing");
    EXPECT_THAT(system.contents(), IsEmpty());
}

TEST_F(MacTrashTest, LeavesWhatCannotBeMoved) {
    static_cast<void>(folder.write("Corvane.app/Contents/Info.plist", "text"));
    system.fail();
    trash.moveThere(folder / "Corvane.app");
    EXPECT_THAT(folder.names(), ElementsAre("Corvane.app"));
}

}  // namespace
}  // namespace corvane
