#include <array>
#include <fstream>
#include <optional>
#include <string>

#include <fcntl.h>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/desktop/DirectoryListing.h"
#include "platform/linux/desktop/MountTable.h"
#include "platform/posix/FileDescriptor.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

TEST(DirectoryListingTest, ReadsToTheEnd) {
    const TemporaryFolder folder;
    const std::size_t empty = listDirectory(folder.path());
    EXPECT_GT(empty, 0U);
    constexpr int many = 3000;
    for (int i = 0; i < many; ++i) {
        folder.write(fmt::format("a file with a name that is as long as this {:05}", i), "");
    }
    // An entry is longer than its name.
    EXPECT_GT(listDirectory(folder.path()), empty + many * 50);
}

TEST(DirectoryListingTest, IsNothingWhereThereIsNoDirectory) {
    const TemporaryFolder folder;
    EXPECT_EQ(listDirectory(folder / "none"), 0U);
    EXPECT_EQ(listDirectory(folder.write("file", "")), 0U);
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(listDirectory(folder / "pipe"), 0U);
}

/// How many bytes this thread has had drives read so far; none where the kernel does not count.
std::optional<unsigned long> bytesFromDrives() {
    std::ifstream counts("/proc/thread-self/io");
    std::string name;
    unsigned long count = 0;
    while (counts >> name >> count) {
        if (name == "read_bytes:") {
            return count;
        }
    }
    return std::nullopt;
}

/// File systems in memory have no drive below.
bool countsReadsPastTheCache(const std::string& path) {
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_DIRECT | O_CLOEXEC));
    alignas(4096) std::array<char, 4096> block;
    const auto before = bytesFromDrives();
    return file.isOpen() && fsync(file.get()) == 0 && read(file.get(), block.data(), block.size()) > 0 &&
           before < bytesFromDrives();
}

TEST(DirectoryListingTest, ReachesTheDriveEachTime) {
    const TemporaryFolder folder;
    folder.write("empty", "");
    folder.write("file", std::string(8192, 'x'));
    if (!countsReadsPastTheCache(folder / "file")) {
        GTEST_SKIP() << "what is read past the cache cannot be measured here";
    }
    for (int i = 0; i < 3; ++i) {
        const auto before = bytesFromDrives();
        listDirectory(folder.path());
        EXPECT_GE(*bytesFromDrives(), *before + 4096);
    }
}

/// A file system of its own, which notes every access.
class MountedDirectoryTest : public testing::Test {
protected:
    void SetUp() override {
        if (mount("none", path.c_str(), "tmpfs", MS_STRICTATIME, "size=64k") != 0) {
            GTEST_SKIP() << "file systems may not be mounted here";
        }
        isMounted = true;
    }
    void TearDown() override { unmount(); }

    void unmount() {
        if (isMounted) {
            umount(path.c_str());
            isMounted = false;
        }
    }

    TemporaryFolder folder;
    const std::string path = folder.path().string() + "/with a blank";
    bool isMounted = false;

    MountedDirectoryTest() { mkdir(path.c_str(), 0700); }
};

TEST_F(MountedDirectoryTest, IsAccessedByAListing) {
    constexpr timespec longAgo{1'000'000'000, 0};
    const std::array<timespec, 2> times{longAgo, longAgo};
    ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times.data(), 0), 0);
    EXPECT_GT(listDirectory(path), 0U);
    struct stat info = {};
    ASSERT_EQ(stat(path.c_str(), &info), 0);
    EXPECT_GT(info.st_atim.tv_sec, longAgo.tv_sec);
}

TEST_F(MountedDirectoryTest, IsInTheKernelsTableAsLongAsItIsMounted) {
    EXPECT_TRUE(isMountPoint(readMountTable("/proc/self/mountinfo"), path));
    unmount();
    EXPECT_FALSE(isMountPoint(readMountTable("/proc/self/mountinfo"), path));
}

}  // namespace
}  // namespace corvane
