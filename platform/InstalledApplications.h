#pragma once

#include <functional>
#include <string>
#include <vector>

namespace corvane {

/// An application that the user could start from a menu.
struct InstalledApplication {
    /// As in `RunningApplications`.
    std::string identifier;
    /// In the user's language; never empty. UTF-8.
    std::string name;
    /// A name in the icon theme or the absolute path of an image; empty for none.
    std::string iconName;

    bool operator==(const InstalledApplication&) const = default;
};

/// The applications that are installed, but this one. Belongs to the main loop and does not block it.
class InstalledApplications {
public:
    using List = std::vector<InstalledApplication>;

    InstalledApplications() = default;
    InstalledApplications(const InstalledApplications&) = delete;
    InstalledApplications& operator=(const InstalledApplications&) = delete;
    virtual ~InstalledApplications() = default;

    /// `reply` runs later on the main loop, once, with the applications as they are then, in no particular
    /// order; empty when the system does not tell. It does not run after this is destroyed.
    virtual void list(std::function<void(List)> reply) = 0;
};

}  // namespace corvane
