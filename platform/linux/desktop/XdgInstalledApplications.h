#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/InstalledApplications.h"
#include "platform/Lifetime.h"
#include "platform/Locale.h"
#include "platform/SerialQueue.h"
#include "platform/linux/desktop/BackgroundWorkers.h"
#include "platform/linux/desktop/EnvironmentLookup.h"
#include "platform/linux/desktop/MainLoopExit.h"

namespace corvane {

/// The applications in the menus of the user's desktop, by their desktop files. Main loop; the files are read
/// in the background each time, and a disk that hangs keeps the reply back for as long.
class XdgInstalledApplications final : public InstalledApplications {
public:
    /// `mainLoop` and `locale` outlive the applications; the environment is looked into now.
    XdgInstalledApplications(SerialQueue& mainLoop, const Locale& locale,
                             const EnvironmentLookup& environment);
    ~XdgInstalledApplications() override;

    void list(std::function<void(List)> reply) override;

private:
    void answer(std::uint64_t number, List list);

    SerialQueue& mainLoop_;
    const Locale& locale_;
    std::vector<std::string> folders_;
    std::vector<std::string> desktops_;
    std::uint64_t lastNumber_ = 0;
    std::map<std::uint64_t, std::function<void(List)>> replies_;
    std::shared_ptr<MainLoopExit> exit_;
    BackgroundWorkers workers_;
    Lifetime lifetime_;
};

}  // namespace corvane
