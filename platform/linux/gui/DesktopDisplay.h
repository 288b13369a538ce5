#pragma once

#include <QCoreApplication>
#include <QStringList>
#include <memory>
#include <string>
#include <variant>

#include "platform/linux/desktop/EnvironmentLookup.h"
#include "platform/linux/gui/XConnection.h"

namespace corvane {

/// Where windows can be shown.
struct DesktopDisplay {
    /// What Qt calls the way there: "xcb", "wayland", or whatever the user wants.
    std::string qtPlatform;
    /// To the X server, if that is where. A server begins anew when its last client leaves, and drops whoever
    /// comes just then: this one stays until Qt has come.
    std::shared_ptr<const XConnection> connection;

    /// What this environment leads to, or in English why there is nothing. Qt would end the process if it
    /// looked by itself and found nothing. An X server is preferred, a Wayland compositor's own one included:
    /// only there a pop-up lies where it is put. Waits for the display to answer. `pluginFolders` are those
    /// in which Qt looks for its plugins.
    static std::variant<DesktopDisplay, std::string> find(
        const EnvironmentLookup& environment,
        const QStringList& pluginFolders = QCoreApplication::libraryPaths());
};

}  // namespace corvane
