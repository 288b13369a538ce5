#include <memory>
#include <optional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/desktop/MacVolumes.h"
#include "platform/simulated/VirtualTime.h"
#include "tests/platform/macos/fakes/Foundation/FakeVolumes.h"
#include "tests/platform/macos/fakes/dispatch/FakeDispatch.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MacVolumesTest : public testing::Test {
protected:
    VirtualTime time;
    FakeDispatch dispatch{time};
    FakeVolumes system;
    std::unique_ptr<MacVolumes> volumes = std::make_unique<MacVolumes>(dispatch.mainQueue());
    int touches = 0;
};

TEST_F(MacVolumesTest, AreThoseThatTheSystemShowsInItsOrder) {
    system.set({{.path = "/", .name = "Macintosh HD", .isInternal = true, .isBrowsable = true},
                {.path = "/dev", .isHidden = true},
                {.path = "/Volumes/Süß", .name = "Süß", .isInternal = false, .isBrowsable = true}});
    EXPECT_THAT(
        volumes->mounted(),
        ElementsAre(Volume{.path = "/", .name = "Macintosh HD", .isInternal = true, .isBrowsable = true},
                    Volume{.path = "/Volumes/Süß", .name = "Süß", .isInternal = false, .isBrowsable = true}));
}

TEST_F(MacVolumesTest, HaveNoneOfWhatTheSystemDoesNotSay) {
    const Volume unknown{
        .path = "/Volumes/A", .name = std::nullopt, .isInternal = std::nullopt, .isBrowsable = std::nullopt};
    system.set({{.path = "/Volumes/A"}});
    EXPECT_THAT(volumes->mounted(), ElementsAre(unknown));
    system.set({{.path = "/Volumes/A",
                 .name = "A",
                 .isInternal = false,
                 .isBrowsable = true,
                 .isUnreadable = true}});
    EXPECT_THAT(volumes->mounted(), ElementsAre(unknown));
    system.set({{.path = "/Volumes/A", .isNonsense = true}});
    EXPECT_THAT(volumes->mounted(), ElementsAre(unknown));
}

TEST_F(MacVolumesTest, AreNoneWhenTheSystemDoesNotTell) {
    system.set({{.path = "/Volumes/A"}});
    system.fail();
    EXPECT_THAT(volumes->mounted(), IsEmpty());
    EXPECT_FALSE(volumes->isMounted("/Volumes/A"));
}

TEST_F(MacVolumesTest, AreMountedWhereTheSystemHasThemNotWhereFoldersAre) {
    const TemporaryFolder folder;
    system.set({{.path = "/Volumes/A", .isUnreadable = true}, {.path = "/Volumes/B", .isHidden = true}});
    EXPECT_TRUE(volumes->isMounted("/Volumes/A"));
    EXPECT_TRUE(volumes->isMounted("/Volumes/B"));
    EXPECT_FALSE(volumes->isMounted("/Volumes/C"));
    EXPECT_FALSE(volumes->isMounted("/Volumes"));
    EXPECT_FALSE(volumes->isMounted(folder.path().string()));
}

TEST_F(MacVolumesTest, AreTouchedInTheBackground) {
    const TemporaryFolder folder;
    const auto done = [this] {
        EXPECT_TRUE(dispatch.isOnMainThread());
        ++touches;
    };
    volumes->touch(folder.path().string(), done);
    volumes->touch(folder.path().string(), done);
    volumes->touch((folder / "missing").string(), done);
    EXPECT_EQ(touches, 0);
    time.settle();
    EXPECT_EQ(touches, 3);
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST_F(MacVolumesTest, TellNobodyOfATouchOnceTheyAreGone) {
    const TemporaryFolder folder;
    volumes->touch(folder.path().string(), [this] { ++touches; });
    volumes.reset();
    time.settle();
    EXPECT_EQ(touches, 0);
}

TEST_F(MacVolumesTest, MayEndAfterATouch) {
    const TemporaryFolder folder;
    volumes->touch(folder.path().string(), [this] { volumes.reset(); });
    time.settle();
    EXPECT_EQ(volumes, nullptr);
}

}  // namespace
}  // namespace corvane
