// The panel's texts and marks that follow a rule.

#include <string>

#include <fmt/format.h>

#include "app/menu/BatteryChip.h"
#include "app/menu/MenuState.h"
#include "app/menu/ProfileTexts.h"

namespace corvane {

namespace {

/// Seconds. From here on a boost is longer than anybody needs.
constexpr double longBoost = 1800;

}  // namespace

bool MenuState::batteryVisible() const {
    return power_.value().hasBattery;
}

QString MenuState::batterySymbol() const {
    return BatteryChip::symbol(power_);
}

QString MenuState::batteryCharge() const {
    return BatteryChip::charge(power_);
}

bool MenuState::batteryIsLow() const {
    return BatteryChip::isLow(power_);
}

bool MenuState::batteryHint() const {
    const bool drains = !manager().activeKinds().empty() || manager().lid().enabled() || fan().isBoosted();
    return power_.value().hasBattery && !power_.value().onAC && drains;
}

bool MenuState::automationCoolsHarder() const {
    const auto trigger = fan().triggerProfile();
    if (!trigger || !fan().fansEnabled()) {
        return false;
    }
    return fan().coolingMode() == CoolingMode::manual ? fan().autoFloor() > fan().manualPercent()
                                                      : *trigger > fan().coolingProfile();
}

bool MenuState::showsLongBoostWarning() const {
    return fan().boostDuration() >= longBoost;
}

QString MenuState::fanProfileName() const {
    const auto trigger = fan().triggerProfile();
    return trigger ? QString::fromUtf8(ProfileTexts::name(*trigger, services_.lang)) : QString();
}

QString MenuState::profileBlurb() const {
    return QString::fromUtf8(ProfileTexts::blurb(fan().coolingProfile(), services_.lang));
}

QString MenuState::autoStatusText() const {
    const Lang& lang = services_.lang;
    if (!fan().autoEngaged()) {
        return QString::fromUtf8(
            lang.text("Überwacht — leise, bis es wärmer wird", "Watching — quiet until it warms up"));
    }
    const char* text = lang.text("Aktiv · Lüfterboden {:.0f} %", "Active · floor {:.0f} %");
    return QString::fromStdString(fmt::format(fmt::runtime(text), fan().autoFloor()));
}

QString MenuState::thermalWarning() const {
    const char* text = services_.lang.text("Mac übernimmt — Lüfter auf {:.0f}% wegen Hitze",
                                           "Mac takes over — fans at {:.0f}% due to heat");
    return QString::fromStdString(fmt::format(fmt::runtime(text), fan().effectivePercent()));
}

QString MenuState::manualSliderText() const {
    return QString::fromStdString(fmt::format("{:.0f}%", manualSlider()));
}

void MenuState::retranslate() {
    Q_EMIT coolingTextsChanged();
}

}  // namespace corvane
