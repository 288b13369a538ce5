#include "platform/linux/desktop/XdgUrlOpener.h"

#include <QProcess>
#include <QStandardPaths>
#include <QString>
#include <csignal>
#include <optional>

#include "platform/linux/HeldSignals.h"
#include "platform/linux/desktop/HttpsUrl.h"

namespace corvane {

void XdgUrlOpener::open(const std::string& url) {
    const std::optional<QUrl> address = httpsUrl(url);
    const QString program = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    if (!address || program.isEmpty()) {
        return;
    }
    QProcess process;
    process.setProgram(program);
    process.setArguments({QString::fromLatin1(address->toEncoded())});
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    // What the application holds back ends the browser. Async-signal-safe, as it must be.
    process.setChildProcessModifier(
        [held = terminationSignals()] { sigprocmask(SIG_UNBLOCK, &held, nullptr); });
    process.startDetached();
}

}  // namespace corvane
