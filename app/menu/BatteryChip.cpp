#include "app/menu/BatteryChip.h"

namespace corvane {

namespace {

constexpr int quarter = 25;

int nearestQuarter(int percent) {
    return (percent + quarter / 2) / quarter * quarter;
}

}  // namespace

QString BatteryChip::symbol(const PowerInfo& power) {
    if (power.isCharging) {
        return QStringLiteral("battery.100.bolt");
    }
    return QStringLiteral("battery.%1").arg(nearestQuarter(power.percentage.value_or(0)));
}

QString BatteryChip::charge(const PowerInfo& power) {
    return power.percentage ? QStringLiteral("%1%").arg(*power.percentage) : QString();
}

bool BatteryChip::isLow(const PowerInfo& power) {
    return power.percentage && *power.percentage <= lowPercent;
}

}  // namespace corvane
