#include "platform/linux/gui/DesktopAppearance.h"

#include <QColor>
#include <QGuiApplication>
#include <QPalette>
#include <string_view>
#include <utility>

namespace corvane {

namespace {

constexpr int middleLightness = 128;

std::string_view valueOf(const EnvironmentLookup& environment, const char* name) {
    const char* value = environment(name);
    return value == nullptr ? std::string_view() : std::string_view(value);
}

std::optional<bool> forcedDark(std::string_view value) {
    if (value == "dark" || value == "light") {
        return value == "dark";
    }
    return std::nullopt;
}

}  // namespace

DesktopAppearance::DesktopAppearance(BusThread& busThread, SerialQueue& mainLoop,
                                     EnvironmentLookup environment, HelperBus bus)
    : busThread_(busThread),
      environment_(std::move(environment)),
      isForcedDark_(forcedDark(valueOf(environment_, "CORVANE_APPEARANCE"))) {
    auto take = lifetime_.bound([this](std::optional<bool> prefersDark) { setPreference(prefersDark); });
    portal_ = std::make_shared<PortalLink>(
        busThread_.context(), std::move(bus), [&mainLoop, take](std::optional<bool> prefersDark) {
            mainLoop.async([take, prefersDark]() mutable { take(prefersDark); });
        });
    busThread_.post([portal = portal_] { portal->start(); });
}

DesktopAppearance::~DesktopAppearance() {
    busThread_.post([portal = std::move(portal_)] {});
}

bool DesktopAppearance::isDark() const {
    if (isForcedDark_) {
        return *isForcedDark_;
    }
    return prefersDark_ ? *prefersDark_ : isThemeDark();
}

std::unique_ptr<Observation> DesktopAppearance::observe(std::function<void()> changed) {
    return observers_.add(std::move(changed));
}

void DesktopAppearance::setPreference(std::optional<bool> prefersDark) {
    const bool wasDark = isDark();
    prefersDark_ = prefersDark;
    if (isDark() != wasDark) {
        observers_.notify();
    }
}

bool DesktopAppearance::isThemeDark() const {
    const std::string_view theme = valueOf(environment_, "GTK_THEME");
    if (!theme.empty()) {
        return theme.ends_with(":dark") || theme.ends_with("-dark") || theme.ends_with("-Dark");
    }
    return QGuiApplication::palette().color(QPalette::Window).lightness() < middleLightness;
}

}  // namespace corvane
