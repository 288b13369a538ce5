#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/InstalledApplications.h"
#include "platform/MainLoopReplies.h"
#include "platform/SerialQueue.h"
#include "platform/macos/desktop/ApplicationBundles.h"

namespace corvane {

/// The applications in a Mac's folders for them. Main loop; the folders are read in the background each time,
/// and a disk that hangs keeps the reply back for as long.
class MacInstalledApplications final : public InstalledApplications {
public:
    /// `mainLoop` outlives the applications.
    explicit MacInstalledApplications(SerialQueue& mainLoop,
                                      std::vector<std::string> folders = applicationFolders());

    void list(std::function<void(List)> reply) override;

private:
    std::vector<std::string> folders_;
    MainLoopReplies<List> replies_;
};

}  // namespace corvane
