#include "platform/linux/desktop/XdgInstalledApplications.h"

#include <utility>

#include "platform/ApplicationIdentifier.h"
#include "platform/linux/desktop/DesktopFiles.h"
#include "platform/linux/desktop/OneLine.h"

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
    : mainLoop_(mainLoop),
      locale_(locale),
      folders_(desktopFileFolders(environment)),
      desktops_(desktopNames(environment)),
      exit_(std::make_shared<MainLoopExit>(mainLoop)) {}

XdgInstalledApplications::~XdgInstalledApplications() {
    exit_->close();
}

void XdgInstalledApplications::list(std::function<void(List)> reply) {
    const std::uint64_t number = ++lastNumber_;
    replies_.emplace(number, std::move(reply));
    auto tell = lifetime_.bound([this, number](List list) { answer(number, std::move(list)); });
    const bool isUnderWay = workers_.post(
        [tell, exit = exit_, folders = folders_,
         viewer = DesktopViewer{.languages = locale_.preferredLanguages(), .desktops = desktops_}] {
            exit->toMainLoop([tell, list = applicationsIn(folders, viewer)]() mutable { tell(list); });
        });
    if (!isUnderWay) {
        mainLoop_.async([tell]() mutable { tell(List()); });
    }
}

void XdgInstalledApplications::answer(std::uint64_t number, List list) {
    // It may ask again.
    replies_.extract(number).mapped()(std::move(list));
}

}  // namespace corvane
