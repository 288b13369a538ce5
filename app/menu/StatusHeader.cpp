#include "app/menu/StatusHeader.h"

namespace corvane {

StatusHeader::StatusHeader(SleepManager& manager, const Lang& lang) : manager_(manager), lang_(lang) {
    connect(&manager, &SleepManager::anythingActiveChanged, this, &StatusHeader::changed);
    connect(&manager, &SleepManager::countdownChanged, this, &StatusHeader::changed);
    connect(&manager.fan(), &FanController::autoEngagedChanged, this, &StatusHeader::changed);
    connect(&manager.triggers(), &TriggerManager::activeReasonChanged, this, &StatusHeader::changed);
}

StatusHeader::Status StatusHeader::status() const {
    const FanController& fan = manager_.fan();
    if (!manager_.activeKinds().empty()) {
        return Status::awake;
    }
    if (manager_.lid().enabled()) {
        return Status::lid;
    }
    if (fan.isBoosted() || fan.autoEngaged()) {
        return Status::cooling;
    }
    if (fan.fansEnabled()) {
        return Status::watching;
    }
    return manager_.triggers().active() ? Status::automation : Status::inactive;
}

bool StatusHeader::active() const {
    return status() != Status::inactive;
}

QString StatusHeader::label() const {
    switch (status()) {
        case Status::awake:
            return lang_.text("Wach-Session aktiv", "Keep-awake active");
        case Status::lid:
            return lang_.text("Zugeklappt wach", "Awake, lid closed");
        case Status::cooling:
            return lang_.text("Kühlung aktiv", "Cooling active");
        case Status::watching:
            return lang_.text("Kühlung überwacht", "Cooling on watch");
        case Status::automation:
            return lang_.text("Automatik aktiv", "Automation active");
        case Status::inactive:
            return lang_.text("Inaktiv", "Inactive");
    }
    return {};
}

QString StatusHeader::sessionLine() const {
    if (!manager_.expiresAt()) {
        return {};
    }
    return QString::fromUtf8(lang_.text("⏱ noch %1 · bis %2", "⏱ %1 left · until %2"))
        .arg(manager_.remainingText(), manager_.expiryDescription());
}

QString StatusHeader::automationLine() const {
    if (!manager_.triggers().active()) {
        return {};
    }
    return QString::fromUtf8(lang_.text("🤖 Automatik hält wach (%1)", "🤖 Auto keep-awake (%1)"))
        .arg(manager_.triggers().activeReason());
}

}  // namespace corvane
