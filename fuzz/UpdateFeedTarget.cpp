#include <compare>
#include <utility>

#include <fmt/format.h>

#include "app/shell/UpdateChecker.h"
#include "app/shell/compareVersions.h"
#include "fuzz/faultOf.h"

namespace corvane {

namespace {

constexpr const char* runningVersion = "1.9";

/// Holds the one request until it is answered.
class OneRequest final : public HttpsClient {
public:
    void get(const Request& /*request*/, Done done) override { done_ = std::move(done); }
    void answer(std::string body) { done_(std::move(body)); }

private:
    Done done_;
};

class LastOpened final : public UrlOpener {
public:
    void open(const std::string& url) override { url_ = url; }
    [[nodiscard]] const std::string& url() const { return url_; }

private:
    std::string url_;
};

}  // namespace

/// Whatever the feed says, only a newer version is offered and only https is opened.
std::string faultOf(std::string_view data) {
    OneRequest client;
    LastOpened opener;
    UpdateChecker checker({client, opener}, {.feedUrl = "https://corvane.example/appcast.json",
                                             .homePage = "https://corvane.example/",
                                             .currentVersion = runningVersion});
    checker.check();
    client.answer(std::string(data));
    checker.openDownload();
    if (!opener.url().starts_with("https://")) {
        return fmt::format("'{}' is opened", opener.url());
    }
    const std::string offered = checker.latestVersion().toStdString();
    if (offered.empty()) {
        const bool isClear = checker.downloadURL().isEmpty() && checker.releaseNotes().isEmpty();
        return isClear ? "" : "something is published of no version";
    }
    return std::is_gt(compareVersions(offered, runningVersion)) ? ""
                                                                : fmt::format("'{}' is offered", offered);
}

}  // namespace corvane
