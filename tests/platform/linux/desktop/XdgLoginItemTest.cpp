#include <filesystem>
#include <map>
#include <string>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/desktop/DesktopFile.h"
#include "platform/linux/desktop/XdgLoginItem.h"
#include "platform/posix/PosixFileSystem.h"
#include "platform/simulated/RecordingLog.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr const char* name = "config/autostart/de.tavrin.corvane.desktop";

class XdgLoginItemTest : public testing::Test {
protected:
    const TemporaryFolder folder;
    PosixFileSystem files;
    RecordingLog log;
    XdgLoginItem item{files, log, folder / name, "/opt/corvane/bin/corvane"};
};

TEST_F(XdgLoginItemTest, IsOffAtFirst) {
    EXPECT_FALSE(item.isEnabled());
    item.setEnabled(false);
    EXPECT_THAT(folder.names(), IsEmpty());
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(XdgLoginItemTest, IsADesktopFileThatStartsTheApplication) {
    item.setEnabled(true);
    EXPECT_TRUE(item.isEnabled());
    EXPECT_EQ(folder.read(name),
              "[Desktop Entry]\n"
              "Type=Application\n"
              "Name=Corvane\n"
              "Icon=de.tavrin.corvane\n"
              "Exec=\"/opt/corvane/bin/corvane\"\n"
              "X-GNOME-Autostart-enabled=true\n");
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(XdgLoginItemTest, IsRemovedWhenItIsSwitchedOff) {
    item.setEnabled(true);
    item.setEnabled(false);
    EXPECT_FALSE(item.isEnabled());
    EXPECT_TRUE(fs::is_empty((folder / name).parent_path()));
}

TEST_F(XdgLoginItemTest, IsNotWrittenAgainWhenItIsOnAlready) {
    folder.write(name, "[Desktop Entry]\nType=Application\nName=My own\nExec=\"/opt/corvane/bin/corvane\"\n");
    EXPECT_TRUE(item.isEnabled());
    EXPECT_TRUE(item.setEnabled(true));
    EXPECT_THAT(folder.read(name), HasSubstr("My own"));
}

TEST_F(XdgLoginItemTest, IsWrittenAgainWhenItWouldStartAnotherProgram) {
    for (const char* executable : {"Exec=\"/usr/local/bin/corvane\"", "Exec=", "# none"}) {
        folder.write(name, fmt::format("[Desktop Entry]\nType=Application\n{}\n", executable));
        EXPECT_TRUE(item.setEnabled(true));
        EXPECT_THAT(folder.read(name), HasSubstr("\nExec=\"/opt/corvane/bin/corvane\"\n")) << executable;
    }
}

TEST_F(XdgLoginItemTest, CountsAsOffWhenTheUserHasSwitchedItOffElsewhere) {
    for (const char* entry : {"Hidden=true", "X-GNOME-Autostart-enabled=false"}) {
        folder.write(name, fmt::format("[Desktop Entry]\nType=Application\nExec=corvane\n{}\n", entry));
        EXPECT_FALSE(item.isEnabled()) << entry;
        item.setEnabled(true);
        EXPECT_TRUE(item.isEnabled()) << entry;
    }
}

TEST_F(XdgLoginItemTest, CountsAsOffWhenItsFileIsNoDesktopFile) {
    folder.write(name, std::string("\0\xff[", 3));
    EXPECT_FALSE(item.isEnabled());
    fs::remove(folder / name);
    fs::create_directory(folder / name);
    EXPECT_FALSE(item.isEnabled());
}

TEST_F(XdgLoginItemTest, QuotesAnyPathForTheDesktop) {
    for (const std::string program : {"plain", "two words", "a\"b", "a\\b", "a$b", "a`b", "a'b;c", "a\nb"}) {
        const TemporaryFolder own;
        XdgLoginItem any(files, log, own / name, fs::path("/opt") / program);
        any.setEnabled(true);
        const auto file = readDesktopFile(own.read(name));
        ASSERT_TRUE(file) << program;
        EXPECT_THAT(file->programs, ElementsAre(program));
        EXPECT_EQ(file->argumentCount, 0) << program;
    }
    XdgLoginItem percent(files, log, folder / name, "/opt/100%f");
    percent.setEnabled(true);
    EXPECT_THAT(folder.read(name), HasSubstr("\nExec=\"/opt/100%%f\"\n")) << "no file is put in its place";
}

TEST_F(XdgLoginItemTest, TellsTheLogAloneWhatFails) {
    folder.write("config", "in the way of a folder");
    item.setEnabled(true);
    EXPECT_FALSE(item.isEnabled());
    EXPECT_THAT(log.lines(), ElementsAre(StartsWith("Corvane login-item toggle failed: ")));
    log.clear();
    XdgLoginItem homeless(files, log, "", "/opt/corvane");
    homeless.setEnabled(true);
    EXPECT_FALSE(homeless.isEnabled());
    EXPECT_THAT(log.lines(),
                ElementsAre("Corvane login-item toggle failed: the environment names no home folder"));
}

TEST(XdgLoginItemFile, IsInTheUsersAutostartFolder) {
    std::map<std::string, std::string> variables;
    const auto file = [&] {
        return autostartFile([&](const char* variable) {
            const auto found = variables.find(variable);
            return found == variables.end() ? nullptr : found->second.c_str();
        });
    };
    EXPECT_EQ(file(), "");
    variables["HOME"] = "/home/somebody";
    EXPECT_EQ(file(), "/home/somebody/.config/autostart/de.tavrin.corvane.desktop");
    variables["XDG_CONFIG_HOME"] = "relative";
    EXPECT_EQ(file(), "/home/somebody/.config/autostart/de.tavrin.corvane.desktop");
    variables["XDG_CONFIG_HOME"] = "/settings";
    EXPECT_EQ(file(), "/settings/autostart/de.tavrin.corvane.desktop");
}

}  // namespace
}  // namespace corvane
