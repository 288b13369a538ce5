#pragma once

#include <optional>
#include <string>

#include "app/menu/StatusHeader.h"
#include "app/menu/TemperatureBadge.h"
#include "app/ui/AppearanceState.h"
#include "app/ui/InstalledApplicationsModel.h"
#include "app/ui/LanguageState.h"
#include "platform/simulated/SimulatedAppearance.h"
#include "platform/simulated/SimulatedInstalledApplications.h"
#include "tests/app/menu/MenuMachine.h"

namespace corvane {

/// Everything that the panel shows, on a simulated Mac. Set up what it shall find, then `openPanel`.
class PanelMachine : public MenuMachine {
public:
    /// The application has been running for a while, and its panel appears.
    void openPanel(float celsius = 50) {
        start(celsius);
        advance(20s);
        menu.emplace(services());
        header.emplace(*manager, lang);
        temperature.emplace(manager->fan(), lang);
        menu->panelAppeared();
        settle();
    }

    /// The user chooses a language.
    void speak(const char* code) {
        defaults.set(Lang::setting, std::string(code));
        language.refresh();
        if (menu) {
            menu->retranslate();
            header->retranslate();
            temperature->retranslate();
        }
    }

    /// No helper is installed.
    void removeHelper() {
        installer.setInstalled(false);
        host.setInstalled(false);
    }

    /// A volume the user may choose.
    void attach(const std::string& name) {
        std::vector<Volume> mounted = volumes.mounted();
        mounted.push_back({"/Volumes/" + name, name, false, true});
        volumes.setMounted(mounted);
    }

    SimulatedAppearance look;
    SimulatedInstalledApplications installed{mainLoop};
    LanguageState language{lang};
    AppearanceState appearance{look};
    std::optional<StatusHeader> header;
    std::optional<TemperatureBadge> temperature;
    InstalledApplicationsModel applicationsModel{installed, locale};
};

}  // namespace corvane
