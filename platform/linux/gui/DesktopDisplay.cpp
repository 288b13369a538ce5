#include "platform/linux/gui/DesktopDisplay.h"

#include <QDirIterator>
#include <QJsonArray>
#include <QJsonObject>
#include <QPluginLoader>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <utility>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace corvane {

namespace {

std::string variable(const EnvironmentLookup& environment, const char* name) {
    const char* const value = environment(name);
    return value == nullptr ? "" : value;
}

/// Nothing where nobody answers.
std::shared_ptr<const XConnection> connectToX11(const std::string& display) {
    if (display.empty()) {
        return nullptr;
    }
    auto connection = std::make_shared<const XConnection>(display);
    return connection->isLost() ? nullptr : connection;
}

bool acceptsConnections(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) {
        return false;
    }
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (descriptor < 0) {
        return false;
    }
    // The socket interface takes every kind of address by this type.
    const int result = connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    // Somebody who is busy listens all the same.
    const bool isThere = result == 0 || errno == EAGAIN;
    close(descriptor);
    return isThere;
}

bool answersWayland(const EnvironmentLookup& environment) {
    const std::string display = variable(environment, "WAYLAND_DISPLAY");
    // A name is one below the user's runtime folder; an absolute path replaces that.
    const auto path = std::filesystem::path(variable(environment, "XDG_RUNTIME_DIR")) / display;
    return !display.empty() && path.is_absolute() && acceptsConnections(path);
}

/// Without loading any of them.
bool hasPlatformPlugin(const char* name, const QStringList& pluginFolders) {
    for (const QString& folder : pluginFolders) {
        QDirIterator plugins(folder + "/platforms", QDir::Files);
        while (plugins.hasNext()) {
            const QJsonObject description = QPluginLoader(plugins.next()).metaData();
            if (description["MetaData"]["Keys"].toArray().contains(QLatin1String(name))) {
                return true;
            }
        }
    }
    return false;
}

}  // namespace

std::variant<DesktopDisplay, std::string> DesktopDisplay::find(const EnvironmentLookup& environment,
                                                               const QStringList& pluginFolders) {
    if (const std::string wanted = variable(environment, "QT_QPA_PLATFORM"); !wanted.empty()) {
        return DesktopDisplay{wanted, nullptr};
    }
    if (auto connection = connectToX11(variable(environment, "DISPLAY"))) {
        return DesktopDisplay{"xcb", std::move(connection)};
    }
    if (answersWayland(environment)) {
        const char* const name = "wayland";
        return hasPlatformPlugin(name, pluginFolders)
                   ? std::variant<DesktopDisplay, std::string>(DesktopDisplay{name, nullptr})
                   : "the display is one of Wayland, for which Qt lacks its plugin (package qt6-wayland)";
    }
    return "there is no display to show anything on: neither DISPLAY nor WAYLAND_DISPLAY leads to one";
}

}  // namespace corvane
