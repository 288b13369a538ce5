#include "app/application/AppDelegate.h"

#include <utility>

#include <fmt/printf.h>

#include "app/shell/ShellSettings.h"

namespace corvane {

namespace {

std::optional<QPoint> pointOf(const StatusItemAnchor& anchor) {
    return anchor.point ? std::optional(QPoint(anchor.point->x, anchor.point->y)) : std::nullopt;
}

}  // namespace

AppDelegate::AppDelegate(AppDelegateServices services)
    : services_(std::move(services)),
      menu_({services_.manager, services_.lang, [this] { openPopover(); }, [this] { toggleKeepAwake(); },
             [this] { toggleFanBoost(); }, services_.quit}) {}

AppDelegate::~AppDelegate() {
    letGo();
}

void AppDelegate::letGo() {
    services_.onboarding.setOnFinished(nullptr);
    services_.hotkeys.setHandler(nullptr);
    services_.statusItem.setHandlers({});
}

void AppDelegate::applicationDidFinishLaunching() {
    services_.statusItem.setImage(StatusImage::gauge50);
    services_.statusItem.setHandlers({.activated = [this](const auto& anchor) { togglePopover(anchor); },
                                      .chosen = [this](int id) { menu_.choose(id); }});
    followModels();
    updateIconSoon();
    introduce();
    services_.manager.updates().check();
    services_.hotkeys.setHandler([this](Hotkeys::Action action) { perform(action); });
    services_.hotkeys.setEnabled(services_.defaults.get<bool>(ShellSettings::hotkeys).value_or(true));
}

/// The fan controller's time advances with each poll, so that a setting shows within a second of its change.
void AppDelegate::followModels() {
    SleepManager& manager = services_.manager;
    const auto soon = &AppDelegate::updateIconSoon;
    connect(&services_.header, &StatusHeader::changed, this, soon);
    connect(&manager, &SleepManager::anythingActiveChanged, this, soon);
    connect(&manager, &SleepManager::activeKindsChanged, this, soon);
    connect(&manager.fan(), &FanController::nowChanged, this, soon);
    connect(&manager.fan(), &FanController::cpuTempChanged, this, soon);
    connect(&manager.fan(), &FanController::cpuTempSmoothedChanged, this, soon);
    connect(&manager.fan(), &FanController::fansEnabledChanged, this, soon);
    connect(&manager.fan(), &FanController::helperInstalledChanged, this, soon);
    connect(&manager.triggers(), &TriggerManager::activeChanged, this, soon);
}

/// Once for all that changes in one turn of the main loop.
void AppDelegate::updateIconSoon() {
    if (!std::exchange(isIconOutdated_, true)) {
        services_.mainLoop.async(lifetime_.bound([this] {
            isIconOutdated_ = false;
            updateIcon();
        }));
    }
}

void AppDelegate::updateIcon() {
    const bool isActive = services_.manager.anythingActive();
    services_.statusItem.setImage(isActive ? StatusImage::gauge100 : StatusImage::gauge50);
    const std::string temperature = temperatureTitle();
    services_.statusItem.setTitle(temperature);
    // The title is drawn; the tool tip can be heard.
    services_.statusItem.setToolTip("Corvane", services_.header.label().toStdString() + temperature);
    services_.statusItem.setMenu(isWithdrawn_ ? std::vector<StatusMenuEntry>() : menu_.entries());
}

std::string AppDelegate::temperatureTitle() const {
    const FanController& fan = services_.manager.fan();
    const auto celsius = fan.cpuTempSmoothed() ? fan.cpuTempSmoothed() : fan.cpuTemp();
    const bool isWanted = services_.defaults.get<bool>(ShellSettings::showTemperature).value_or(false);
    return isWanted && celsius ? fmt::sprintf(" %.0f°", *celsius) : std::string();
}

/// The introduction comes before the panel, which follows it when it was seen to its end.
void AppDelegate::introduce() {
    services_.onboarding.setOnFinished([this] { openPopover(); });
    const bool isIntroduced = services_.onboarding.showIfFirstLaunch();
    const bool isNew = services_.defaults.get<std::string>(lastBuildSetting) != services_.buildNumber;
    services_.defaults.set(lastBuildSetting, services_.buildNumber);
    if (isNew && !isIntroduced) {
        openingTimer_ = services_.mainLoop.after(firstOpeningDelay, [this] { openPopover(); });
    }
}

void AppDelegate::togglePopover(const StatusItemAnchor& anchor) {
    anchor_ = pointOf(anchor);
    if (services_.popover.isShown()) {
        services_.popover.close();
    } else if (!services_.popover.wasClosedByThisClick(anchor_)) {
        openPopover();
    }
}

/// A tray that tells the item's place only with a click: where it was clicked last.
void AppDelegate::openPopover() {
    if (isWithdrawn_) {
        return;
    }
    if (const auto place = pointOf(services_.statusItem.anchor())) {
        anchor_ = place;
    }
    services_.activation.activate();
    services_.popover.show(anchor_);
}

void AppDelegate::perform(Hotkeys::Action action) {
    switch (action) {
        case Hotkeys::Action::toggleKeepAwake:
            return toggleKeepAwake();
        case Hotkeys::Action::toggleFanBoost:
            return toggleFanBoost();
    }
}

void AppDelegate::withdraw() {
    isWithdrawn_ = true;
    letGo();
    services_.popover.close();
    services_.onboarding.close();
    updateIconSoon();
}

void AppDelegate::toggleKeepAwake() {
    SleepManager& manager = services_.manager;
    if (manager.activeKinds().empty()) {
        const WallTime end =
            services_.mainLoop.wallTime() + std::chrono::duration_cast<WallTime::duration>(hotkeySession);
        manager.apply({SleepManager::Kind::system, SleepManager::Kind::display}, end);
    } else {
        manager.stopSession();
    }
}

void AppDelegate::toggleFanBoost() {
    FanController& fan = services_.manager.fan();
    if (fan.helperInstalled()) {
        fan.setFansEnabled(!fan.fansEnabled());
    }
}

}  // namespace corvane
