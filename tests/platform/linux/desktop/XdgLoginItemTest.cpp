#include <filesystem>
#include <string>
#include <string_view>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/desktop/DesktopEntries.h"
#include "platform/linux/desktop/DesktopFile.h"
#include "platform/linux/desktop/XdgLoginItem.h"
#include "platform/posix/PosixFileSystem.h"
#include "platform/simulated/RecordingLog.h"
#include "tests/platform/LoginItemContract.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr const char* name = "config/autostart/de.tavrin.corvane.desktop";

class XdgLoginItemRig {
public:
    LoginItem& item() { return item_; }
    /// What the folder should be is a file.
    void breakDown() const { folder_.write("config", "text"); }

private:
    const TemporaryFolder folder_;
    PosixFileSystem files_;
    RecordingLog log_;
    XdgLoginItem item_{files_, log_, folder_ / name, "/opt/corvane/bin/corvane"};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Xdg, LoginItemContract, XdgLoginItemRig);

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
              "TryExec=/opt/corvane/bin/corvane\n"
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
        const std::string text = own.read(name);
        EXPECT_EQ(DesktopEntries(text).plain("TryExec"), fs::path("/opt") / program);
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
}

TEST(XdgLoginItemFile, IsInTheUsersAutostartFolder) {
    const auto folder = [](const char* variable) {
        return std::string_view(variable) == "XDG_CONFIG_HOME" ? "/config" : nullptr;
    };
    EXPECT_EQ(autostartFile(folder), "/config/autostart/de.tavrin.corvane.desktop");
}

}  // namespace
}  // namespace corvane
