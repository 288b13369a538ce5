#include "app/fan/FanController.h"

#include <QPointer>
#include <utility>

#include <fmt/format.h>

#include "app/fan/FanSettings.h"

namespace corvane {

using namespace std::chrono_literals;

FanController::FanController(const FanControllerServices& services)
    : mainLoop_(services.mainLoop),
      connector_(services.connector),
      installer_(services.installer),
      thermalMonitor_(services.thermalMonitor),
      defaults_(services.defaults),
      notifier_(services.notifier),
      lang_(services.lang),
      log_(services.log) {
    announceCountdowns();
    now_ = mainLoop_.bootTime();
    thermalState_ = thermalMonitor_.state();
    helperInstalled_ = installer_.isInstalled();
    helperNeedsUpdate_ = installer_.needsUpdate();
    restoreChoices();
    if (helperInstalled_) {
        connectIfNeeded();
    }
    pollTimer_ = mainLoop_.every(1s, 1s, [this] { poll(); });
    thermalObserver_ = thermalMonitor_.observe([this] { updateThermalState(); });
}

FanController::~FanController() = default;

void FanController::announceCountdowns() {
    connect(this, &FanController::nowChanged, this, &FanController::countdownChanged);
    connect(this, &FanController::boostExpiresAtChanged, this, &FanController::countdownChanged);
    connect(this, &FanController::spinUpUntilChanged, this, &FanController::countdownChanged);
    connect(this, &FanController::spinningUpChanged, this, &FanController::countdownChanged);
}

void FanController::restoreChoices() {
    if (const auto text = defaults_.get<std::string>(FanSettings::coolingMode)) {
        if (const auto mode = coolingModeFromRawValue(*text)) {
            setCoolingMode(*mode);
        }
    }
    if (const auto text = defaults_.get<std::string>(FanSettings::coolingProfile)) {
        if (const auto kind = CoolingProfile::fromRawValue(*text)) {
            setCoolingProfile(*kind);
        }
    }
}

void FanController::connectIfNeeded() {
    if (connection_) {
        return;
    }
    connection_ = connector_.connect({
        .interrupted =
            [this] {
                log_.write("Corvane: the fan helper has gone, the next call starts it again");
                setStatusMessage("Helper unterbrochen — verbinde neu");
            },
        .invalidated =
            [this] {
                log_.write("Corvane: there is no fan helper to connect to");
                dropConnection();
                setStatusMessage("Helper-Verbindung verloren");
            },
        .failed =
            [this](const std::string& description) {
                log_.write(fmt::format("Corvane: a call of the fan helper failed: {}", description));
                setStatusMessage("XPC-Fehler: " + description);
                dropConnection();
            },
    });
    refresh();
}

void FanController::dropConnection() {
    connection_.reset();
}

FanHelperProtocol* FanController::remoteProxy() const {
    return connection_ ? &connection_->remoteObject() : nullptr;
}

void FanController::poll() {
    now_ = mainLoop_.bootTime();
    refresh();
}

void FanController::refresh() {
    if (FanHelperProtocol* helper = remoteProxy()) {
        helper->getStatusWithReply([this](const StatusRecord& status) { applyStatus(status); });
    }
}

void FanController::installHelper() {
    if (isInstalling_) {
        return;
    }
    isInstalling_ = true;
    installer_.install([self = QPointer(this)](const InstallResult& result) {
        if (self) {
            self->finishInstallation(result);
        }
    });
}

void FanController::finishInstallation(const InstallResult& result) {
    isInstalling_ = false;
    switch (result.outcome) {
        case InstallResult::Outcome::success:
            helperInstalled_ = true;
            helperNeedsUpdate_ = false;
            setStatusMessage("Helper installiert");
            dropConnection();
            connectIfNeeded();
            break;
        case InstallResult::Outcome::cancelled:
            setStatusMessage("Installation abgebrochen");
            break;
        case InstallResult::Outcome::failure:
            log_.write(fmt::format("Corvane: the fan helper could not be installed: {}", result.message));
            setStatusMessage("Fehler: " + result.message);
            break;
    }
}

void FanController::setStatusMessage(std::string_view text) {
    statusMessage_ = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace corvane
