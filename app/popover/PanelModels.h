#pragma once

#include "app/menu/MenuState.h"
#include "app/menu/StatusHeader.h"
#include "app/menu/TemperatureBadge.h"
#include "app/session/SleepManager.h"
#include "app/shell/Lang.h"
#include "platform/Appearance.h"
#include "platform/InstalledApplications.h"
#include "platform/Locale.h"
#include "platform/SerialQueue.h"

namespace corvane {

/// What the panel shows. All of it outlives the panel.
struct PanelModels {
    SerialQueue& mainLoop;
    SleepManager& manager;
    MenuState& menu;
    StatusHeader& header;
    TemperatureBadge& temperature;
    InstalledApplications& applications;
    Appearance& appearance;
    const Lang& lang;
    const Locale& locale;
};

}  // namespace corvane
