#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/Appearance.h"
#include "platform/Lifetime.h"
#include "platform/Observers.h"
#include "platform/SerialQueue.h"
#include "platform/linux/HelperBus.h"
#include "platform/linux/desktop/BusThread.h"
#include "platform/linux/desktop/EnvironmentLookup.h"
#include "platform/linux/gui/PortalLink.h"

namespace corvane {

/// Dark or light as the variable CORVANE_APPEARANCE says, "dark" or "light"; else as the desktop's portal
/// does, which is followed; else as the toolkits' own theme is: GTK_THEME, or the colour of Qt's windows.
/// Main loop.
class DesktopAppearance final : public Appearance {
public:
    /// Made after the QGuiApplication. The bus thread and the main loop outlive it.
    DesktopAppearance(BusThread& busThread, SerialQueue& mainLoop, EnvironmentLookup environment,
                      HelperBus bus = {"session"});
    ~DesktopAppearance() override;

    [[nodiscard]] bool isDark() const override;
    [[nodiscard]] std::unique_ptr<Observation> observe(std::function<void()> changed) override;

private:
    void setPreference(std::optional<bool> prefersDark);
    [[nodiscard]] bool isThemeDark() const;

    BusThread& busThread_;
    EnvironmentLookup environment_;
    /// What the variable says.
    std::optional<bool> isForcedDark_;
    /// What the portal says.
    std::optional<bool> prefersDark_;
    Observers observers_;
    Lifetime lifetime_;
    /// Belongs to the bus thread.
    std::shared_ptr<PortalLink> portal_;
};

}  // namespace corvane
