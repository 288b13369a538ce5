// The properties whose types are the models' own, as a view reads and writes them.

#include <string>

#include "app/fan/FanController.h"

namespace corvane {

namespace {

QString textOf(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

QString FanController::boostRemainingLine() const {
    return textOf(boostRemainingText().value_or(""));
}

QString FanController::coolingModeText() const {
    return textOf(rawValue(coolingMode_));
}

void FanController::setCoolingModeText(const QString& text) {
    if (const auto mode = coolingModeFromRawValue(text.toStdString())) {
        setCoolingMode(*mode);
    }
}

QString FanController::coolingProfileText() const {
    return textOf(CoolingProfile::rawValue(coolingProfile_));
}

void FanController::setCoolingProfileText(const QString& text) {
    if (const auto kind = CoolingProfile::fromRawValue(text.toStdString())) {
        setCoolingProfile(*kind);
    }
}

QString FanController::triggerProfileText() const {
    const auto kind = triggerProfile();
    return kind ? textOf(CoolingProfile::rawValue(*kind)) : QString();
}

}  // namespace corvane
