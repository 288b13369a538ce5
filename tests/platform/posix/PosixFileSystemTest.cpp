#include <csignal>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "platform/posix/PosixFileSystem.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

using namespace std::literals;
using testing::ElementsAre;
using testing::Optional;

/// Files of this process cannot grow beyond `bytes`: a write that goes further fails, as on a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &former_);
        const rlimit limited{bytes, former_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limited);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &former_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    rlimit former_{};
    void (*handler_)(int);
};

class PosixFileSystemTest : public testing::Test {
protected:
    TemporaryFolder folder;
    PosixFileSystem files;
};

TEST_F(PosixFileSystemTest, TellsFilesFromWhatIsNone) {
    const auto file = folder.write("file", "");
    std::filesystem::create_symlink(file, folder / "link");
    std::filesystem::create_symlink(folder / "nothing", folder / "dangling");
    EXPECT_TRUE(files.isFile(file));
    EXPECT_TRUE(files.isFile(folder / "link"));
    EXPECT_FALSE(files.isFile(folder / "dangling"));
    EXPECT_FALSE(files.isFile(folder / "nothing"));
    EXPECT_FALSE(files.isFile(folder.path()));
    EXPECT_FALSE(files.isFile(file / "below a file"));
}

TEST_F(PosixFileSystemTest, WritesTextAsItIsForItsOwnerAlone) {
    EXPECT_EQ(files.writeAtomically(folder / "file", "für\nalle\0!"sv), std::nullopt);
    EXPECT_EQ(folder.read("file"), "für\nalle\0!"sv);
    EXPECT_THAT(folder.names(), ElementsAre("file"));
    struct stat status {};
    ASSERT_EQ(stat((folder / "file").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0600U);
}

TEST_F(PosixFileSystemTest, ReplacesAFileWhole) {
    folder.write("file", "something longer");
    EXPECT_EQ(files.writeAtomically(folder / "file", "short"), std::nullopt);
    EXPECT_EQ(folder.read("file"), "short");
    EXPECT_EQ(files.writeAtomically(folder / "file", ""), std::nullopt);
    EXPECT_EQ(folder.read("file"), "");
    EXPECT_THAT(folder.names(), ElementsAre("file"));
}

TEST_F(PosixFileSystemTest, SaysWhyItCannotWrite) {
    EXPECT_THAT(files.writeAtomically(folder / "missing" / "file", "text"),
                Optional(std::string("No such file or directory")));
    folder.write("file", "");
    EXPECT_THAT(files.writeAtomically(folder / "file" / "below a file", "text"),
                Optional(std::string("Not a directory")));
    EXPECT_THAT(folder.names(), ElementsAre("file"));
}

TEST_F(PosixFileSystemTest, LeavesNothingBehindWhenTheTargetIsAFolder) {
    std::filesystem::create_directory(folder / "target");
    EXPECT_THAT(files.writeAtomically(folder / "target", "text"), Optional(std::string("Is a directory")));
    EXPECT_THAT(folder.names(), ElementsAre("target"));
}

TEST_F(PosixFileSystemTest, KeepsTheOldFileWhenTheDiskIsFullHalfway) {
    folder.write("file", "old");
    std::optional<std::string> error;
    {
        const FileSizeLimit limit(4096);
        error = files.writeAtomically(folder / "file", std::string(10'000, 'x'));
    }
    EXPECT_THAT(error, Optional(std::string("File too large")));
    EXPECT_EQ(folder.read("file"), "old");
    EXPECT_THAT(folder.names(), ElementsAre("file"));
}

TEST_F(PosixFileSystemTest, RemovesAFileAndPassesOverWhatItCannotRemove) {
    folder.write("file", "");
    std::filesystem::create_directory(folder / "folder");
    files.remove(folder / "file");
    files.remove(folder / "file");
    files.remove(folder / "folder");
    EXPECT_THAT(folder.names(), ElementsAre("folder"));
}

TEST_F(PosixFileSystemTest, RemovesAFolderWithEverythingInItAndFollowsNoLink) {
    folder.write("folder/deep/file", "");
    folder.write("file", "");
    folder.write("elsewhere/kept", "");
    std::filesystem::create_directory_symlink(folder / "elsewhere", folder / "folder/link");
    std::filesystem::create_directory_symlink(folder / "elsewhere", folder / "link");
    for (const char* name : {"folder", "file", "link", "nothing"}) {
        files.removeTree(folder / name);
    }
    EXPECT_THAT(folder.names(), ElementsAre("elsewhere"));
    EXPECT_TRUE(files.isFile(folder / "elsewhere/kept"));
}

TEST_F(PosixFileSystemTest, FindsOneDifferentByteWhereverItIs) {
    // The sizes are those of the blocks it reads, and their neighbours.
    for (const std::size_t size : {1U, 65'535U, 65'536U, 65'537U, 131'072U, 200'000U}) {
        SCOPED_TRACE(size);
        std::string content(size, '\0');
        const auto one = folder.write("one", content);
        const auto same = folder.write("same", content);
        EXPECT_FALSE(files.differ(one, same));
        for (const std::size_t at : {std::size_t{0}, size / 2, size - 1}) {
            content[at] = 1;
            EXPECT_TRUE(files.differ(one, folder.write("other", content))) << at;
            content[at] = 0;
        }
        const auto longer = folder.write("longer", content + '\0');
        EXPECT_TRUE(files.differ(one, longer));
        EXPECT_TRUE(files.differ(longer, one));
    }
}

TEST_F(PosixFileSystemTest, TakesNothingForDifferentThatItCannotRead) {
    const auto file = folder.write("file", "content");
    const auto empty = folder.write("empty", "");
    const auto pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const auto& other : {folder / "missing", folder.path(), pipe, std::filesystem::path("/dev/zero")}) {
        EXPECT_FALSE(files.differ(file, other)) << other;
        EXPECT_FALSE(files.differ(other, file)) << other;
    }
    EXPECT_TRUE(files.differ(file, empty));
    EXPECT_FALSE(files.differ(empty, empty));
}

}  // namespace
}  // namespace corvane
