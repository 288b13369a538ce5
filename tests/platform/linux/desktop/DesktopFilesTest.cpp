#include <filesystem>
#include <map>
#include <string>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/linux/desktop/DesktopFiles.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::Optional;

class DesktopFilesTest : public testing::Test {
protected:
    void install(const std::string& path, const std::string& command, const std::string& more = "") const {
        folder.write(path, fmt::format("[Desktop Entry]\nType=Application\nExec={}\n{}", command, more));
    }

    std::string applicationOf(const std::string& program) {
        files.refresh();
        return files.applicationOf(program).value_or("");
    }

    /// Until nothing more is read.
    void settle() {
        while (files.refresh()) {
        }
    }

    const TemporaryFolder folder;
    DesktopFiles files{{(folder / "own").string(), (folder / "system").string()}};
};

TEST_F(DesktopFilesTest, AreFoundByTheirProgram) {
    install("system/org.blender.Blender.desktop", "/usr/bin/blender %f");
    files.refresh();
    EXPECT_THAT(files.applicationOf("blender"), Optional(std::string("org.blender.Blender")));
    EXPECT_EQ(files.applicationOf("org.blender.Blender"), std::nullopt);
}

TEST_F(DesktopFilesTest, OfTheUserTakePrecedence) {
    install("system/a.desktop", "theirs");
    install("own/a.desktop", "mine");
    EXPECT_EQ(applicationOf("mine"), "a");
    EXPECT_EQ(applicationOf("theirs"), "");
}

TEST_F(DesktopFilesTest, ThatAreHiddenHideOthers) {
    install("system/a.desktop", "tool");
    install("own/a.desktop", "tool", "Hidden=true\n");
    EXPECT_EQ(applicationOf("tool"), "");
}

TEST_F(DesktopFilesTest, InFoldersHaveThoseInTheirIdentifiers) {
    install("system/kde/sub/tool.desktop", "tool");
    EXPECT_EQ(applicationOf("tool"), "kde-sub-tool");
}

TEST_F(DesktopFilesTest, ThatStartAProgramMostPlainlyStandForIt) {
    install("system/a-writer.desktop", "office --writer");
    install("system/z-office.desktop", "office %U");
    EXPECT_EQ(applicationOf("office"), "z-office");
}

TEST_F(DesktopFilesTest, InTheMenusStandForTheirProgramFirst) {
    install("system/a-handler.desktop", "tool", "NoDisplay=true\n");
    install("system/tool.desktop", "tool --start");
    EXPECT_EQ(applicationOf("tool"), "tool");
}

TEST_F(DesktopFilesTest, AreReadAgainOnlyWhenAFolderChanged) {
    install("system/a.desktop", "first");
    EXPECT_TRUE(files.refresh());
    settle();
    EXPECT_FALSE(files.refresh());
    install("system/b.desktop", "second");
    EXPECT_EQ(applicationOf("second"), "b");
    settle();
    std::filesystem::remove(folder / "system/b.desktop");
    EXPECT_EQ(applicationOf("second"), "");
    settle();
    install("own/c.desktop", "third");
    EXPECT_EQ(applicationOf("third"), "c");
    settle();
    install("own/sub/d.desktop", "fourth");
    EXPECT_EQ(applicationOf("fourth"), "sub-d");
    settle();
    install("own/sub/e.desktop", "fifth");
    EXPECT_EQ(applicationOf("fifth"), "sub-e");
}

TEST_F(DesktopFilesTest, AreReadOnceMoreForWhatIsWrittenMeanwhile) {
    folder.write("own/a.desktop", "");
    files.refresh();
    // The folder does not change when its file does.
    install("own/a.desktop", "tool");
    EXPECT_EQ(applicationOf("tool"), "a");
}

TEST_F(DesktopFilesTest, MayBeAnything) {
    install("system/good.desktop", "good");
    folder.write("system/garbage.desktop", std::string(1000, '\xff'));
    folder.write("system/huge.desktop", std::string(1'000'000, 'x'));
    folder.write("system/folder.desktop/inside", "");
    std::filesystem::create_symlink("/no/such/file", folder / "system/dangling.desktop");
    std::filesystem::create_symlink("loop.desktop", folder / "system/loop.desktop");
    std::filesystem::create_directory_symlink(".", folder / "system/loop");
    std::filesystem::create_directories(folder / "system/a/b/c/d/e/f/g/h");
    ASSERT_EQ(mkfifo((folder / "system/pipe.desktop").c_str(), 0600), 0);
    install("system/\x01.desktop", "nameless");
    EXPECT_EQ(applicationOf("good"), "good");
    EXPECT_EQ(applicationOf("nameless"), "");
}

TEST_F(DesktopFilesTest, NeedNotExist) {
    EXPECT_EQ(applicationOf("tool"), "");
    EXPECT_EQ(DesktopFiles({}).applicationOf("tool"), std::nullopt);
}

class DesktopFileFoldersTest : public testing::Test {
protected:
    std::vector<std::string> folders() {
        return desktopFileFolders([this](const char* name) {
            const auto found = environment.find(name);
            return found == environment.end() ? nullptr : found->second.c_str();
        });
    }

    std::map<std::string, std::string> environment{{"HOME", "/home/ann"}};
};

TEST_F(DesktopFileFoldersTest, AreTheUsersAndTheSystems) {
    EXPECT_THAT(folders(), ElementsAre("/home/ann/.local/share/applications", "/usr/local/share/applications",
                                       "/usr/share/applications"));
}

TEST_F(DesktopFileFoldersTest, AreThoseThatTheEnvironmentNames) {
    environment["XDG_DATA_HOME"] = "/data";
    environment["XDG_DATA_DIRS"] = "/a/:relative::/b:/a";
    EXPECT_THAT(folders(), ElementsAre("/data/applications", "/a/applications", "/b/applications"));
}

}  // namespace
}  // namespace corvane
