#include "app/menu/TemperatureBadge.h"

#include <algorithm>

#include <fmt/format.h>

#include "app/menu/TemperatureScale.h"
#include "app/menu/ThrottleBadge.h"

namespace corvane {

namespace {

/// Rounded as printf does; Qt rounds halves the other way.
QString degrees(double celsius) {
    return QString::fromStdString(fmt::format("{:.0f}°", celsius));
}

}  // namespace

TemperatureBadge::TemperatureBadge(const FanController& fan, const Lang& lang) : fan_(fan), lang_(lang) {
    connect(&fan, &FanController::cpuTempChanged, this, &TemperatureBadge::changed);
    connect(&fan, &FanController::cpuTempSmoothedChanged, this, &TemperatureBadge::changed);
    connect(&fan, &FanController::gpuTempChanged, this, &TemperatureBadge::changed);
    connect(&fan, &FanController::gpuTempSmoothedChanged, this, &TemperatureBadge::changed);
    connect(&fan, &FanController::fansChanged, this, &TemperatureBadge::changed);
    connect(&fan, &FanController::thermalStateChanged, this, &TemperatureBadge::changed);
    connect(&fan, &FanController::tempTrendChanged, this, &TemperatureBadge::changed);
}

std::optional<double> TemperatureBadge::cpuTemperature() const {
    const std::optional<double> smoothed = fan_.cpuTempSmoothed();
    return smoothed ? smoothed : fan_.cpuTemp();
}

QString TemperatureBadge::temperature() const {
    const std::optional<double> celsius = cpuTemperature();
    return celsius ? degrees(*celsius) : QString();
}

QString TemperatureBadge::word() const {
    const std::optional<double> celsius = cpuTemperature();
    return celsius ? QString::fromUtf8(TemperatureScale::word(*celsius, lang_)) : QString();
}

QString TemperatureBadge::colorRole() const {
    const std::optional<double> celsius = cpuTemperature();
    return celsius ? QString::fromUtf8(TemperatureScale::colorRole(*celsius)) : QString();
}

QString TemperatureBadge::gpuTemperature() const {
    const std::optional<double> raw = fan_.gpuTemp();
    // Its median outlives the sensor: a graphics processor that sleeps has no temperature.
    return raw ? degrees(fan_.gpuTempSmoothed().value_or(*raw)) : QString();
}

QString TemperatureBadge::rpmLine() const {
    const QList<FanInfo> fans = fan_.fans();
    if (fans.isEmpty()) {
        return {};
    }
    const int fastest = std::ranges::max(fans, {}, &FanInfo::currentRPM).currentRPM;
    return fastest > 0 ? QStringLiteral("%1 rpm").arg(fastest)
                       : QString::fromUtf8(lang_.text("Lüfter aus", "fans off"));
}

QString TemperatureBadge::throttleLabel() const {
    const auto badge = ThrottleBadge::infoFor(fan_.thermalState(), lang_);
    return badge ? QString::fromUtf8(badge->label) : QString();
}

QString TemperatureBadge::throttleRole() const {
    const auto badge = ThrottleBadge::infoFor(fan_.thermalState(), lang_);
    return badge ? QString::fromUtf8(badge->role) : QString();
}

}  // namespace corvane
