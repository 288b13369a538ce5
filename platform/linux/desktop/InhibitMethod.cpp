#include "platform/linux/desktop/InhibitMethod.h"

namespace corvane {

namespace {

using Form = InhibitMethod::Form;

// The session manager's own flags: "the session must not be marked as idle", which is what turns the display
// off, and "the computer must not be suspended".
constexpr std::uint32_t noSuspend = 4;
constexpr std::uint32_t noIdle = 8;

constexpr InhibitMethod sessionManagerSystem{Form::flags,
                                             "org.gnome.SessionManager",
                                             "/org/gnome/SessionManager",
                                             "org.gnome.SessionManager",
                                             "Uninhibit",
                                             noSuspend};
constexpr InhibitMethod sessionManagerDisplay{Form::flags,
                                              "org.gnome.SessionManager",
                                              "/org/gnome/SessionManager",
                                              "org.gnome.SessionManager",
                                              "Uninhibit",
                                              noIdle};
constexpr InhibitMethod powerManagement{Form::reason,
                                        "org.freedesktop.PowerManagement",
                                        "/org/freedesktop/PowerManagement/Inhibit",
                                        "org.freedesktop.PowerManagement.Inhibit",
                                        "UnInhibit",
                                        0};
constexpr InhibitMethod screenSaver{Form::reason,
                                    "org.freedesktop.ScreenSaver",
                                    "/org/freedesktop/ScreenSaver",
                                    "org.freedesktop.ScreenSaver",
                                    "UnInhibit",
                                    0};
constexpr InhibitMethod loginManager{Form::lock,        Logind::busName, Logind::objectPath,
                                     Logind::interface, nullptr,         0};

const InhibitMethod* ifPresent(const BusOwners& owners, const InhibitMethod& method) {
    return owners.contains(method.busName) ? &method : nullptr;
}

}  // namespace

const InhibitMethod* inhibitMethodOnSessionBus(const BusOwners& owners, IdleKind kind) {
    const bool isForDisplay = kind == IdleKind::display;
    if (owners.contains("org.gnome.SessionManager")) {
        return isForDisplay ? &sessionManagerDisplay : &sessionManagerSystem;
    }
    // KDE's power service follows the login manager's locks, too, so that one does where a part is missing.
    if (owners.contains("org.kde.Solid.PowerManagement")) {
        return ifPresent(owners, isForDisplay ? screenSaver : powerManagement);
    }
    return ifPresent(owners, powerManagement);
}

const InhibitMethod* inhibitMethodOnSystemBus(const BusOwners& owners, IdleKind /*kind*/) {
    return ifPresent(owners, loginManager);
}

}  // namespace corvane
