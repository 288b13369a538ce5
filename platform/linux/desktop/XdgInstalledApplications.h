#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/InstalledApplications.h"
#include "platform/Locale.h"
#include "platform/MainLoopReplies.h"
#include "platform/SerialQueue.h"
#include "platform/linux/desktop/BackgroundWorkers.h"
#include "platform/linux/desktop/EnvironmentLookup.h"

namespace corvane {

/// The applications in the menus of the user's desktop, by their desktop files. Main loop; the files are read
/// in the background each time, and a disk that hangs keeps the reply back for as long.
class XdgInstalledApplications final : public InstalledApplications {
public:
    /// `mainLoop` and `locale` outlive the applications; the environment is looked into now.
    XdgInstalledApplications(SerialQueue& mainLoop, const Locale& locale,
                             const EnvironmentLookup& environment);

    void list(std::function<void(List)> reply) override;

private:
    const Locale& locale_;
    std::vector<std::string> folders_;
    std::vector<std::string> desktops_;
    MainLoopReplies<List> replies_;
    BackgroundWorkers workers_;
};

}  // namespace corvane
