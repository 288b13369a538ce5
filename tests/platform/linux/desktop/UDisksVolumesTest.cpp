#include <functional>
#include <future>
#include <optional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/AsioSerialQueue.h"
#include "platform/linux/desktop/UDisksVolumes.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/FakeUDisks.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;

constexpr const char* table =
    "28 1 259:2 / / rw - ext4 /dev/nvme0n1p2 rw\n"
    "45 28 8:1 / /media/anna/Drive rw - ext4 /dev/sda1 rw\n";

/// The kernel knows no name for the drive at /media/anna/Drive, UDisks calls it "Holidays".
class UDisksVolumesTest : public testing::Test {
protected:
    void SetUp() override {
        if (bus.problem()) {
            GTEST_SKIP() << *bus.problem();
        }
        udisks.emplace(bus.address());
        udisks->add("drives/usb", FakeUDisks::drive("usb"));
        udisks->add("block_devices/sda1", FakeUDisks::block("drives/usb", "Holidays", {"/media/anna/Drive"}));
    }
    void TearDown() override {
        end();
        udisks.reset();
    }

    void begin(UDisksPatience patience = {.answer = testPatience, .news = testPatience},
               DirectoryTouches::List list = listDirectory) {
        mainLoop.sync([&] {
            volumes.emplace(thread, mainLoop, folder.write("mountinfo", table), std::move(list), patience);
        });
    }
    void end() {
        mainLoop.sync([this] { volumes.reset(); });
    }

    std::vector<Volume> mounted() {
        std::vector<Volume> all;
        mainLoop.sync([&] { all = volumes->mounted(); });
        return all;
    }
    void touch(const std::string& path) {
        mainLoop.sync([&] { volumes->touch(path, [this, path] { done.add(path); }); });
    }

    /// Whether that comes true, sooner or later; the bus thread gets its turn in between.
    bool becomes(const std::vector<Volume>& expected) {
        const auto end = std::chrono::steady_clock::now() + testPatience;
        while (mounted() != expected && std::chrono::steady_clock::now() < end) {
            std::promise<void> turn;
            thread.post([&] { turn.set_value(); });
            turn.get_future().wait();
        }
        return mounted() == expected;
    }

    const std::vector<Volume> fromKernel{{"/media/anna/Drive", std::nullopt, false, true}};
    const std::vector<Volume> fromUDisks{{"/media/anna/Drive", "Holidays", false, true}};

    TemporaryFolder folder;
    PrivateBus bus;
    const EnvironmentVariable systemBus{"DBUS_SYSTEM_BUS_ADDRESS", bus.address().c_str()};
    std::optional<FakeUDisks> udisks;
    Notes<std::string> done;
    AsioSerialQueue mainLoop{"main"};
    BusThread thread;
    std::optional<UDisksVolumes> volumes;
};

TEST_F(UDisksVolumesTest, ComeFromUDisks) {
    udisks->comeUp();
    begin();
    EXPECT_TRUE(becomes(fromUDisks));
}

TEST_F(UDisksVolumesTest, FollowWhatIsMountedPluggedInAndTakenOut) {
    udisks->comeUp();
    begin();
    ASSERT_TRUE(becomes(fromUDisks));
    udisks->change("block_devices/sda1", "Filesystem", "MountPoints", FakeUDisks::mountPoints({}));
    EXPECT_TRUE(becomes({}));
    udisks->change("block_devices/sda1", "Filesystem", "MountPoints",
                   FakeUDisks::mountPoints({"/media/a", "/media/b"}));
    EXPECT_TRUE(becomes({{"/media/a", "Holidays", false, true}, {"/media/b", "Holidays", false, true}}));
    udisks->add("block_devices/sdb1", FakeUDisks::block("drives/usb", "", {"/media/c"}));
    EXPECT_TRUE(becomes({{"/media/a", "Holidays", false, true},
                         {"/media/b", "Holidays", false, true},
                         {"/media/c", std::nullopt, false, true}}));
    udisks->remove("block_devices/sda1");
    EXPECT_TRUE(becomes({{"/media/c", std::nullopt, false, true}}));
}

TEST_F(UDisksVolumesTest, ComeFromTheKernelAtOnceWhileUDisksHasNotAnswered) {
    udisks->setHanging(true);
    udisks->comeUp();
    begin();
    EXPECT_EQ(mounted(), fromKernel);
    ASSERT_TRUE(udisks->questions().waitFor(1));
    EXPECT_EQ(mounted(), fromKernel);
    udisks->setHanging(false);
    EXPECT_TRUE(becomes(fromUDisks));
}

TEST_F(UDisksVolumesTest, ComeFromTheKernelWithoutUDisksAndWhenItIsGone) {
    begin();
    EXPECT_EQ(mounted(), fromKernel);
    udisks->comeUp();
    EXPECT_TRUE(becomes(fromUDisks));
    udisks.reset();
    EXPECT_TRUE(becomes(fromKernel));
}

TEST_F(UDisksVolumesTest, ComeFromTheKernelWhenUDisksHangs) {
    udisks->comeUp();
    begin({.answer = milliseconds(50), .news = milliseconds(50)});
    ASSERT_TRUE(becomes(fromUDisks));
    udisks->setHanging(true);
    EXPECT_TRUE(becomes(fromKernel)) << "it is found out without news";
    udisks->setHanging(false);
    EXPECT_TRUE(becomes(fromUDisks)) << "and so is its return";
    udisks->change("block_devices/sda1", "Block", "IdLabel", sdbus::Variant(std::string("Work")));
    EXPECT_TRUE(becomes({{"/media/anna/Drive", "Work", false, true}}));
}

TEST_F(UDisksVolumesTest, ComeFromTheKernelWithoutABusAndWhenItHasGoneAway) {
    {
        const EnvironmentVariable none("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/no/such/bus");
        begin();
        EXPECT_TRUE(becomes(fromKernel));
        end();
        std::promise<void> turn;
        thread.post([&] { turn.set_value(); });
        turn.get_future().wait();
    }
    udisks->comeUp();
    begin();
    ASSERT_TRUE(becomes(fromUDisks));
    udisks.reset();
    bus.end();
    EXPECT_TRUE(becomes(fromKernel));
}

TEST_F(UDisksVolumesTest, ComeFromUDisksAgainWhenTheBusIsBack) {
    const EnvironmentVariable place("DBUS_SYSTEM_BUS_ADDRESS", bus.place().c_str());
    udisks->comeUp();
    begin({.answer = testPatience, .news = testPatience, .retry = std::chrono::milliseconds(10)});
    ASSERT_TRUE(becomes(fromUDisks));
    for (int times = 0; times < 2; ++times) {
        udisks.reset();
        bus.end();
        ASSERT_TRUE(becomes(fromKernel));
        bus.startAgain();
        ASSERT_EQ(bus.problem(), std::nullopt);
        udisks.emplace(bus.address());
        udisks->add("drives/usb", FakeUDisks::drive("usb"));
        udisks->add("block_devices/sda1", FakeUDisks::block("drives/usb", "Holidays", {"/media/anna/Drive"}));
        udisks->comeUp();
        EXPECT_TRUE(becomes(fromUDisks));
    }
}

TEST_F(UDisksVolumesTest, MayGoWhileUDisksIsAsked) {
    udisks->setHanging(true);
    udisks->comeUp();
    begin();
    ASSERT_TRUE(udisks->questions().waitFor(1));
    end();
    begin();
}

TEST_F(UDisksVolumesTest, AreMountedWhereTheKernelSaysSoNow) {
    begin();
    const auto isMounted = [this](const std::string& path) {
        bool is = false;
        mainLoop.sync([&] { is = volumes->isMounted(path); });
        return is;
    };
    EXPECT_TRUE(isMounted("/media/anna/Drive"));
    EXPECT_FALSE(isMounted("/media/anna"));
    folder.write("mountinfo", "");
    EXPECT_FALSE(isMounted("/media/anna/Drive"));
}

TEST_F(UDisksVolumesTest, AreTouchedInTheBackgroundAndToldOfOnTheMainLoop) {
    std::promise<std::pair<std::string, std::thread::id>> listed;
    begin({}, [&](const std::string& path) { listed.set_value({path, std::this_thread::get_id()}); });
    std::promise<std::thread::id> told;
    std::thread::id main;
    mainLoop.sync([&] {
        main = std::this_thread::get_id();
        volumes->touch("/media/a", [&] { told.set_value(std::this_thread::get_id()); });
    });
    const auto [path, worker] = listed.get_future().get();
    EXPECT_EQ(path, "/media/a");
    EXPECT_NE(worker, main);
    EXPECT_EQ(told.get_future().get(), main);
}

TEST_F(UDisksVolumesTest, MayBeTouchedWhereThereIsNothing) {
    begin();
    touch(folder / "none");
    EXPECT_TRUE(done.waitFor(1));
}

/// Drives whose names begin with "stuck" hang until they are let go. The listings may outlive the test.
class StuckDrivesTest : public UDisksVolumesTest {
protected:
    StuckDrivesTest() { go_ = drives->goOn.get_future().share(); }

    void beginStuck() {
        begin({}, [drives = drives, go = go_](const std::string& path) {
            drives->listed.add(path);
            if (path.starts_with("stuck")) {
                go.wait();
            }
            drives->ended.add(path);
        });
    }

    struct Drives {
        std::promise<void> goOn;
        Notes<std::string> listed;
        Notes<std::string> ended;
    };
    std::shared_ptr<Drives> drives = std::make_shared<Drives>();

private:
    std::shared_future<void> go_;
};

TEST_F(StuckDrivesTest, DoNotHoldUpOthers) {
    beginStuck();
    touch("stuck");
    ASSERT_TRUE(drives->listed.waitFor(1));
    touch("fine");
    EXPECT_TRUE(done.waitFor(1));
    EXPECT_THAT(done.all(), ElementsAre("fine"));
    drives->goOn.set_value();
    EXPECT_TRUE(done.waitFor(2));
}

TEST_F(StuckDrivesTest, AreListedOnceHoweverOftenTheyAreTouched) {
    beginStuck();
    touch("stuck");
    ASSERT_TRUE(drives->listed.waitFor(1));
    for (int i = 0; i < 100; ++i) {
        touch("stuck");
    }
    touch("fine");
    ASSERT_TRUE(done.waitFor(1));
    drives->goOn.set_value();
    EXPECT_TRUE(done.waitFor(102)) << "each touch is told of";
    EXPECT_EQ(drives->listed.size(), 2U);
}

TEST_F(StuckDrivesTest, AreWaitedForByOnlySoMany) {
    beginStuck();
    for (std::size_t i = 0; i < 2 * DirectoryTouches::most; ++i) {
        touch("stuck");
    }
    ASSERT_TRUE(done.waitFor(DirectoryTouches::most)) << "the others are over at once";
    mainLoop.sync([] {});
    EXPECT_EQ(done.size(), DirectoryTouches::most);
    drives->goOn.set_value();
    ASSERT_TRUE(done.waitFor(2 * DirectoryTouches::most));
    touch("fine");
    ASSERT_TRUE(done.waitFor(2 * DirectoryTouches::most + 1));
    EXPECT_EQ(done.all().back(), "fine");
}

TEST_F(StuckDrivesTest, AreNotWaitedForWhenTheVolumesGo) {
    beginStuck();
    touch("stuck");
    ASSERT_TRUE(drives->listed.waitFor(1));
    end();
    drives->goOn.set_value();
    ASSERT_TRUE(drives->ended.waitFor(1));
    mainLoop.sync([] {});
    EXPECT_EQ(done.size(), 0U);
}

TEST_F(StuckDrivesTest, MayBeTouchedAgainAsSoonAsThatIsToldOf) {
    beginStuck();
    mainLoop.sync([&] {
        volumes->touch("fine", [this] {
            volumes->touch("fine", [this] {
                done.add("twice");
                volumes.reset();
            });
        });
    });
    EXPECT_TRUE(done.waitFor(1));
    EXPECT_EQ(drives->listed.size(), 2U);
}

}  // namespace
}  // namespace corvane
