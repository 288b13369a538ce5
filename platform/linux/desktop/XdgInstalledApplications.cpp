#include "platform/linux/desktop/XdgInstalledApplications.h"

#include <utility>

#include "platform/ApplicationIdentifier.h"
#include "platform/OneLine.h"
#include "platform/linux/desktop/DesktopFiles.h"

namespace corvane {

namespace {

/// In bytes; longer ones are left out.
constexpr std::size_t longestIconName = 1024;

InstalledApplications::List applicationsIn(std::vector<std::string> folders, DesktopViewer viewer) {
    DesktopFiles files(std::move(folders), std::move(viewer));
    files.refresh();
    InstalledApplications::List list;
    for (const auto& [identifier, file] : files.files()) {
        if (!file.isOutOfMenus && !file.name.empty() && identifier != applicationIdentifier) {
            const bool isUsable = file.iconName.size() <= longestIconName;
            list.push_back({identifier, oneLine(file.name), isUsable ? file.iconName : ""});
        }
    }
    return list;
}

}  // namespace

XdgInstalledApplications::XdgInstalledApplications(SerialQueue& mainLoop, const Locale& locale,
                                                   const EnvironmentLookup& environment)
    : locale_(locale),
      folders_(desktopFileFolders(environment)),
      desktops_(desktopNames(environment)),
      replies_(mainLoop) {}

void XdgInstalledApplications::list(std::function<void(List)> reply) {
    const auto tell = replies_.await(std::move(reply));
    const bool isUnderWay = workers_.post(
        [tell, folders = folders_,
         viewer = DesktopViewer{.languages = locale_.preferredLanguages(), .desktops = desktops_}] {
            tell(applicationsIn(folders, viewer));
        });
    if (!isUnderWay) {
        tell({});
    }
}

}  // namespace corvane
