#include "platform/macos/desktop/MacInstalledApplications.h"

#include <utility>

#include "platform/macos/desktop/runInBackground.h"

namespace corvane {

MacInstalledApplications::MacInstalledApplications(SerialQueue& mainLoop, std::vector<std::string> folders)
    : folders_(std::move(folders)), replies_(mainLoop) {}

void MacInstalledApplications::list(std::function<void(List)> reply) {
    runInBackground(
        [folders = folders_, tell = replies_.await(std::move(reply))] { tell(applicationsIn(folders)); });
}

}  // namespace corvane
