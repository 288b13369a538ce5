#include "app/application/StatusMenu.h"

#include <optional>

namespace corvane {

namespace {

enum Entry : int { openEntry = 1, keepAwakeEntry, fansEntry, stopEntry, quitEntry };

StatusMenuEntry action(int id, const char* label, bool isEnabled = true) {
    return {.id = id, .label = label, .isEnabled = isEnabled, .isChecked = std::nullopt};
}

StatusMenuEntry checkable(int id, const char* label, bool isChecked, bool isEnabled = true) {
    return {.id = id, .label = label, .isEnabled = isEnabled, .isChecked = isChecked};
}

StatusMenuEntry separator() {
    return {.id = 0, .label = "", .isEnabled = true, .isChecked = std::nullopt, .isSeparator = true};
}

}  // namespace

std::vector<StatusMenuEntry> StatusMenu::entries() const {
    SleepManager& manager = services_.manager;
    const FanController& fan = manager.fan();
    const Lang& lang = services_.lang;
    return {
        action(openEntry, lang.text("Corvane öffnen", "Open Corvane")),
        separator(),
        checkable(keepAwakeEntry, lang.text("Wach bleiben", "Stay awake"), !manager.activeKinds().empty()),
        checkable(fansEntry, lang.text("Lüfter", "Fans"), fan.fansEnabled(), fan.helperInstalled()),
        action(stopEntry, lang.text("Alles beenden", "Stop everything"), manager.anythingActive()),
        separator(),
        action(quitEntry, lang.text("Corvane beenden", "Quit Corvane")),
    };
}

void StatusMenu::choose(int id) {
    switch (id) {
        case openEntry:
            return services_.openPanel();
        case keepAwakeEntry:
            return services_.toggleKeepAwake();
        case fansEntry:
            return services_.toggleFans();
        case stopEntry:
            return services_.manager.resetAll();
        case quitEntry:
            return services_.quit();
        default:
            return;
    }
}

}  // namespace corvane
