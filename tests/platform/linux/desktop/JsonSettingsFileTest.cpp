// What is in the file is tested with JsonUserDefaults; here is what a loss of power leaves of it.

#include <filesystem>
#include <ostream>
#include <vector>

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "platform/linux/desktop/JsonSettingsFile.h"
#include "tests/support/TemporaryFolder.h"

namespace {

/// A file or folder, by its inode, that was put on the disk.
struct Sync {
    ino_t what;
    /// Whether the settings file had its name then.
    bool isNamed;

    bool operator==(const Sync&) const = default;
    friend std::ostream& operator<<(std::ostream& stream, const Sync& sync) {
        return stream << sync.what
                      << (sync.isNamed ? " once the file had its name" : " before the file had its name");
    }
};

// For the test's thread.
std::filesystem::path settings;
std::vector<Sync> synced;

int noteAndSync(long call, int descriptor) {
    struct stat status {};
    fstat(descriptor, &status);
    std::error_code ignored;
    synced.push_back({status.st_ino, std::filesystem::exists(settings, ignored)});
    return static_cast<int>(syscall(call, descriptor));
}

}  // namespace

// They take the place of the C library's, for Qt's calls too.
extern "C" int fsync(int descriptor) {
    return noteAndSync(SYS_fsync, descriptor);
}
extern "C" int fdatasync(int descriptor) {
    return noteAndSync(SYS_fdatasync, descriptor);
}

namespace corvane {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

ino_t inodeOf(const fs::path& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status.st_ino;
}

class JsonSettingsFileTest : public testing::Test {
protected:
    static void write(const fs::path& path) {
        settings = path;
        synced.clear();
        EXPECT_EQ(JsonSettingsFile(path).write({{"key", true}}), std::nullopt);
    }

    TemporaryFolder folder;
};

TEST_F(JsonSettingsFileTest, PutsTheContentsAndThenTheNameOnTheDisk) {
    write(folder / "settings.json");
    EXPECT_THAT(synced, ElementsAre(Sync{inodeOf(settings), false}, Sync{inodeOf(folder.path()), true}));
}

TEST_F(JsonSettingsFileTest, PutsTheFoldersOnTheDiskThatItMakes) {
    write(folder / "one/two/settings.json");
    EXPECT_THAT(synced, ElementsAre(Sync{inodeOf(folder.path()), false}, Sync{inodeOf(folder / "one"), false},
                                    Sync{inodeOf(settings), false}, Sync{inodeOf(folder / "one/two"), true}));
}

TEST_F(JsonSettingsFileTest, PutsTheNameOnTheDiskWhereALinkLeads) {
    fs::create_directory(folder / "dotfiles");
    fs::create_symlink("dotfiles/settings.json", folder / "settings.json");
    write(folder / "settings.json");
    EXPECT_THAT(synced,
                ElementsAre(Sync{inodeOf(settings), false}, Sync{inodeOf(folder / "dotfiles"), true}));
}

}  // namespace
}  // namespace corvane
