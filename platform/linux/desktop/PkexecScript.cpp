#include "platform/linux/desktop/PkexecScript.h"

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <csignal>
#include <cstddef>
#include <utility>

#include <fmt/format.h>
#include <sys/types.h>

#include "platform/linux/desktop/PkexecResult.h"
#include "platform/posix/HeldSignals.h"

namespace corvane {

namespace {

/// In bytes; the reason of a failure comes last.
constexpr std::size_t keptErrors = 4096;

/// pkexec is root's once it was agreed to: then it cannot be killed by its user, nor should it be.
bool killPrompt(const QProcess& process) {
    return process.processId() <= 0 || kill(static_cast<pid_t>(process.processId()), SIGKILL) == 0;
}

}  // namespace

PkexecScript::PkexecScript(Options options) : options_(std::move(options)) {}

PkexecScript::~PkexecScript() {
    if (!process_) {
        return;
    }
    process_->disconnect();
    if (killPrompt(*process_)) {
        process_->waitForFinished();
        return;
    }
    // QProcess would wait for it.
    QProcess* const running = process_.release();
    QObject::connect(running, &QProcess::finished, running, &QObject::deleteLater);
}

void PkexecScript::run(Done done) {
    done_ = std::move(done);
    errors_.clear();
    process_ = std::make_unique<QProcess>();
    process_->setStandardInputFile(QProcess::nullDevice());
    process_->setStandardOutputFile(QProcess::nullDevice());
    QObject::connect(process_.get(), &QProcess::readyReadStandardError, [this] { keepErrors(); });
    QObject::connect(process_.get(), &QProcess::errorOccurred, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            finish(InstallResult::failure("pkexec is not installed"));
        }
    });
    QObject::connect(process_.get(), &QProcess::finished, [this](int status, QProcess::ExitStatus how) {
        keepErrors();
        finish(how == QProcess::NormalExit
                   ? pkexecResult(status, errors_, options_.work)
                   : InstallResult::failure(fmt::format("{} was interrupted", options_.work)));
    });
    // What the application holds back ends pkexec and the script. Async-signal-safe, as it must be.
    process_->setChildProcessModifier(
        [held = terminationSignals()] { sigprocmask(SIG_UNBLOCK, &held, nullptr); });
    // Its own prompt in a terminal is for people who work in one.
    process_->start(
        QString::fromStdString(options_.pkexec),
        {QStringLiteral("--disable-internal-agent"), QString::fromStdString(options_.script.string())});
}

void PkexecScript::keepErrors() {
    const QByteArray more = process_->readAllStandardError();
    errors_.append(more.constData(), static_cast<std::size_t>(more.size()));
    if (errors_.size() > keptErrors) {
        errors_.erase(0, errors_.size() - keptErrors);
    }
}

void PkexecScript::finish(const InstallResult& result) {
    // This runs inside a signal of the process; `done` may destroy this, which then is to hear of no other.
    process_->disconnect();
    process_.release()->deleteLater();
    const Done done = std::exchange(done_, nullptr);
    done(result);
}

}  // namespace corvane
