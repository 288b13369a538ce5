#include "platform/linux/desktop/XdgUrlOpener.h"

#include <QProcess>
#include <QStandardPaths>
#include <QString>
#include <csignal>
#include <optional>

#include "platform/MailtoUrl.h"
#include "platform/linux/desktop/HttpsUrl.h"
#include "platform/posix/HeldSignals.h"

namespace corvane {

namespace {

/// As it may be handed to xdg-open.
std::optional<QString> openable(const std::string& url) {
    if (isMailtoUrl(url)) {
        return QString::fromStdString(url);
    }
    const std::optional<QUrl> page = httpsUrl(url);
    return page ? std::optional(QString::fromLatin1(page->toEncoded())) : std::nullopt;
}

}  // namespace

void XdgUrlOpener::open(const std::string& url) {
    const std::optional<QString> address = openable(url);
    const QString program = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    if (!address || program.isEmpty()) {
        return;
    }
    QProcess process;
    process.setProgram(program);
    process.setArguments({*address});
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    // What the application holds back ends the browser. Async-signal-safe, as it must be.
    process.setChildProcessModifier(
        [held = terminationSignals()] { sigprocmask(SIG_UNBLOCK, &held, nullptr); });
    process.startDetached();
}

}  // namespace corvane
