#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <string>

#include "platform/linux/LogindLock.h"

namespace corvane {

/// What a computer does when it is left alone, and can be asked not to.
enum class IdleKind { system, display };

/// Who owns which names of a bus: unique names by well-known name, without those that nobody owns.
using BusOwners = std::map<std::string, std::string, std::less<>>;

/// How a service is asked not to let the computer idle. There is one object for each way.
struct InhibitMethod {
    /// What its "Inhibit" takes and answers.
    enum class Form {
        /// The application's id, a window, the reason and flags; a number.
        flags,
        /// The application's name and the reason; a number.
        reason,
        /// What, who, why and how strictly; a descriptor.
        lock
    };

    Form form;
    const char* busName;
    const char* objectPath;
    const char* interface;
    /// What takes the number back; null for a descriptor, which is closed.
    const char* release;
    /// 0 in the other forms.
    std::uint32_t flags;
};

/// The names that decide who is asked on the session bus, and on the system bus.
inline constexpr std::array sessionInhibitors{"org.gnome.SessionManager", "org.kde.Solid.PowerManagement",
                                              "org.freedesktop.PowerManagement",
                                              "org.freedesktop.ScreenSaver"};
inline constexpr std::array systemInhibitors{Logind::busName};

/// Who is asked on the session bus: a GNOME-like session manager before a KDE-like power service before a
/// power manager like that of XFCE. Null for nobody: the login manager is asked then.
[[nodiscard]] const InhibitMethod* inhibitMethodOnSessionBus(const BusOwners& owners, IdleKind kind);

/// The login manager, when it is there, for both kinds.
[[nodiscard]] const InhibitMethod* inhibitMethodOnSystemBus(const BusOwners& owners, IdleKind kind);

}  // namespace corvane
