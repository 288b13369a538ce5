#include "app/shell/UpdateChecker.h"

#include <utility>

#include "app/shell/UpdateFeed.h"
#include "app/shell/compareVersions.h"

namespace corvane {

namespace {

/// What a browser is asked to show: nobody writes longer addresses, or a user's name into one, for people.
constexpr qsizetype longestAddress = 8192;

bool isHttps(const QUrl& url) {
    return url.isValid() && url.scheme() == QStringLiteral("https") && !url.host().isEmpty() &&
           url.userInfo().isEmpty() && url.toEncoded().size() <= longestAddress;
}

}  // namespace

UpdateChecker::UpdateChecker(const UpdateCheckerServices& services, UpdateCheckerConfiguration configuration)
    : services_(services), configuration_(std::move(configuration)) {}

UpdateChecker::~UpdateChecker() = default;

QString UpdateChecker::currentVersion() const {
    return QString::fromStdString(configuration_.currentVersion);
}

void UpdateChecker::check() {
    if (!canCheck()) {
        return;
    }
    services_.client.get({.url = configuration_.feedUrl, .timeout = timeout, .largestBody = largestAnswer},
                         lifetime_.bound([this](const std::optional<std::string>& body) {
                             if (const auto feed = body ? UpdateFeed::parse(*body) : std::nullopt) {
                                 takeFeed(*feed);
                             }
                         }));
}

void UpdateChecker::takeFeed(const UpdateFeed& feed) {
    const bool isNewer = compareVersions(feed.version.toStdString(), configuration_.currentVersion) ==
                         std::weak_ordering::greater;
    const UpdateFeed published = isNewer ? feed : UpdateFeed();
    latestVersion_ = published.version;
    downloadURL_ = published.url;
    releaseNotes_ = published.notes;
}

void UpdateChecker::openDownload() {
    for (const QUrl& url : {downloadURL(), QUrl(QString::fromStdString(configuration_.homePage))}) {
        if (isHttps(url)) {
            services_.opener.open(url.toString(QUrl::FullyEncoded).toStdString());
            return;
        }
    }
}

}  // namespace corvane
