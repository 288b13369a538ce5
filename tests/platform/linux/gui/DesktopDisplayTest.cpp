#include <QDir>
#include <algorithm>
#include <cstring>
#include <map>
#include <string>
#include <variant>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "platform/linux/gui/DesktopDisplay.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/XServer.h"

namespace corvane {
namespace {

using Environment = std::map<std::string, std::string>;

auto find(const Environment& environment,
          const QStringList& pluginFolders = QCoreApplication::libraryPaths()) {
    return DesktopDisplay::find(
        [&](const char* name) {
            const auto entry = environment.find(name);
            return entry == environment.end() ? nullptr : entry->second.c_str();
        },
        pluginFolders);
}

std::string qtPlatform(const Environment& environment,
                       const QStringList& pluginFolders = QCoreApplication::libraryPaths()) {
    const auto found = find(environment, pluginFolders);
    const auto* display = std::get_if<DesktopDisplay>(&found);
    return display == nullptr ? "none: " + std::get<std::string>(found) : display->qtPlatform;
}

constexpr const char* nothing =
    "none: there is no display to show anything on: neither DISPLAY nor WAYLAND_DISPLAY leads to one";

/// Somebody who listens on a socket.
class Listener {
public:
    explicit Listener(const std::string& path) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
        EXPECT_EQ(bind(descriptor_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(listen(descriptor_, 1), 0);
    }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    ~Listener() { close(descriptor_); }

private:
    int descriptor_ = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
};

TEST(DesktopDisplay, IsWhateverTheUserWants) {
    EXPECT_EQ(qtPlatform({{"QT_QPA_PLATFORM", "offscreen"}}), "offscreen");
    EXPECT_EQ(qtPlatform({{"QT_QPA_PLATFORM", "wayland"}, {"DISPLAY", ":0"}}), "wayland");
}

TEST(DesktopDisplay, IsMissingWhereNothingIsNamed) {
    EXPECT_EQ(qtPlatform({}), nothing);
    EXPECT_EQ(qtPlatform({{"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}, {"QT_QPA_PLATFORM", ""}}), nothing);
}

TEST(DesktopDisplay, IsMissingWhereNobodyAnswers) {
    const TemporaryFolder folder;
    const std::string runtime = folder.path().string();
    EXPECT_EQ(qtPlatform({{"DISPLAY", ":4711"}}), nothing);
    EXPECT_EQ(qtPlatform({{"DISPLAY", "no display"}}), nothing);
    EXPECT_EQ(qtPlatform({{"WAYLAND_DISPLAY", "wayland-0"}, {"XDG_RUNTIME_DIR", runtime}}), nothing);
    EXPECT_EQ(qtPlatform({{"WAYLAND_DISPLAY", "wayland-0"}}), nothing);
    EXPECT_EQ(qtPlatform({{"WAYLAND_DISPLAY", "/" + std::string(300, 'x')}}), nothing);
}

/// A server that begins anew forgets all names but its own.
bool knows(const XConnection& connection, const std::string& atom) {
    const auto cookie =
        xcb_intern_atom(connection.get(), 1, static_cast<std::uint16_t>(atom.size()), atom.c_str());
    const XAnswer<xcb_intern_atom_reply_t> answer(xcb_intern_atom_reply(connection.get(), cookie, nullptr));
    return answer && answer->atom != XCB_ATOM_NONE;
}

TEST(DesktopDisplay, KeepsTheXServerFromBeginningAnewBeforeQtIsThere) {
    const XServer server("");
    if (server.problem()) {
        GTEST_SKIP() << *server.problem();
    }
    const auto found = find({{"DISPLAY", server.display()}});
    ASSERT_NE(std::get_if<DesktopDisplay>(&found), nullptr);
    constexpr const char* mark = "CORVANE_WAS_HERE";
    ASSERT_FALSE(knows(XConnection(server.display()), mark));
    ASSERT_NE(XConnection(server.display()).atom(mark), xcb_atom_t{XCB_ATOM_NONE});
    EXPECT_TRUE(knows(XConnection(server.display()), mark));
}

/// Where Qt looks has a file of this name.
bool hasPlugin(const QString& name) {
    return std::ranges::any_of(QCoreApplication::libraryPaths(),
                               [&](const QString& folder) { return QDir(folder).exists(name); });
}

TEST(DesktopDisplay, IsTheCompositorThatListens) {
    if (!hasPlugin("platforms/libqwayland-generic.so")) {
        GTEST_SKIP() << "qt6-wayland is not installed";
    }
    const TemporaryFolder folder;
    const std::string runtime = folder.path().string();
    const Listener compositor(runtime + "/wayland-0");
    EXPECT_EQ(qtPlatform({{"WAYLAND_DISPLAY", "wayland-0"}, {"XDG_RUNTIME_DIR", runtime}}), "wayland");
    EXPECT_EQ(qtPlatform({{"WAYLAND_DISPLAY", runtime + "/wayland-0"}}), "wayland");
    EXPECT_EQ(qtPlatform({{"DISPLAY", ":4711"}, {"WAYLAND_DISPLAY", runtime + "/wayland-0"}}), "wayland");
}

TEST(DesktopDisplay, IsNoCompositorThatQtCannotTalkTo) {
    const TemporaryFolder folder;
    const std::string compositorPath = folder / "wayland-0";
    const Listener compositor(compositorPath);
    const Environment environment{{"WAYLAND_DISPLAY", compositorPath}};
    const QStringList plugins(QString::fromStdString(folder.path().string()));
    const std::string answer =
        "none: the display is one of Wayland, for which Qt lacks its plugin (package qt6-wayland)";
    EXPECT_EQ(qtPlatform(environment, plugins), answer);
    folder.write("platforms/libqwayland-generic.so", "no plugin");
    EXPECT_EQ(qtPlatform(environment, plugins), answer);
    EXPECT_EQ(qtPlatform(environment, {}), answer);
}

}  // namespace
}  // namespace corvane
