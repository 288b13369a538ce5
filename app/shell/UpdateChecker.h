#pragma once

#include <QObject>
#include <QProperty>
#include <QString>
#include <QUrl>
#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

#include "app/shell/UpdateFeed.h"
#include "platform/HttpsClient.h"
#include "platform/Lifetime.h"
#include "platform/UrlOpener.h"

namespace corvane {

/// What the update checker needs. Both outlive the checker.
struct UpdateCheckerServices {
    HttpsClient& client;
    UrlOpener& opener;
};

/// What the update checker is told of this build, in UTF-8.
struct UpdateCheckerConfiguration {
    /// An https address; empty: no request is ever made.
    std::string feedUrl;
    /// An https address; empty: there is none to open.
    std::string homePage;
    std::string currentVersion = "?";
};

/// Asks the maker's feed whether there is a newer version, and opens its page in the user's browser.
/// Downloads and installs nothing. What goes wrong changes nothing and is not reported. Belongs to the main
/// loop.
class UpdateChecker final : public QObject {
    Q_OBJECT

    Q_PROPERTY(QString latestVersion READ latestVersion NOTIFY latestVersionChanged)
    Q_PROPERTY(QUrl downloadURL READ downloadURL NOTIFY downloadURLChanged)
    Q_PROPERTY(QString releaseNotes READ releaseNotes NOTIFY releaseNotesChanged)
    Q_PROPERTY(QString currentVersion READ currentVersion CONSTANT)
    Q_PROPERTY(bool canCheck READ canCheck CONSTANT)

public:
    static constexpr Duration timeout = std::chrono::seconds(10);
    static constexpr std::size_t largestAnswer = 256UL * 1024;

    UpdateChecker(const UpdateCheckerServices& services, UpdateCheckerConfiguration configuration);
    ~UpdateChecker() override;

    /// The newer version that the feed offers; empty when it offers none. Plain text from the network.
    [[nodiscard]] QString latestVersion() const { return latestVersion_; }
    /// As the feed names it, of any scheme; empty when it names none.
    [[nodiscard]] QUrl downloadURL() const { return downloadURL_; }
    /// Of the newer version; empty when it has none. Plain text from the network.
    [[nodiscard]] QString releaseNotes() const { return releaseNotes_; }
    [[nodiscard]] QString currentVersion() const;
    /// There is a feed to ask.
    [[nodiscard]] bool canCheck() const { return !configuration_.feedUrl.empty(); }

    /// Asks the feed and returns at once. Of several checks under way the last to be answered counts.
    void check();

    /// Opens the download, or else the home page; nothing that is not https.
    Q_INVOKABLE void openDownload();

Q_SIGNALS:
    void latestVersionChanged();
    void downloadURLChanged();
    void releaseNotesChanged();

private:
    void takeFeed(const UpdateFeed& feed);

    UpdateCheckerServices services_;
    UpdateCheckerConfiguration configuration_;

    // Published. Assigning a different value announces it.
    Q_OBJECT_BINDABLE_PROPERTY(UpdateChecker, QString, latestVersion_, &UpdateChecker::latestVersionChanged)
    Q_OBJECT_BINDABLE_PROPERTY(UpdateChecker, QUrl, downloadURL_, &UpdateChecker::downloadURLChanged)
    Q_OBJECT_BINDABLE_PROPERTY(UpdateChecker, QString, releaseNotes_, &UpdateChecker::releaseNotesChanged)

    Lifetime lifetime_;
};

}  // namespace corvane
