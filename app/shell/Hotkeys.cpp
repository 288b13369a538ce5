#include "app/shell/Hotkeys.h"

#include <utility>

namespace corvane {

namespace {

constexpr std::uint32_t keepAwakeId = 1;
constexpr std::uint32_t fanBoostId = 2;
constexpr std::uint32_t keepAwakeSignature = 0x44424B41;  // "DBKA"
constexpr std::uint32_t fanBoostSignature = 0x44424641;   // "DBFA"
constexpr std::uint32_t modifiers = HotKeyModifier::command + HotKeyModifier::option;

}  // namespace

void Hotkeys::setEnabled(bool on) {
    if (std::exchange(isEnabled_, on) == on) {
        return;
    }
    registrations_.clear();
    if (!on) {
        return;
    }
    for (const HotKey& key :
         {HotKey{keepAwakeId, 'k', modifiers, lang_.text("Wach bleiben", "Keep awake"), keepAwakeSignature},
          HotKey{fanBoostId, 'l', modifiers, lang_.text("Lüfter-Boost", "Fan boost"), fanBoostSignature}}) {
        registrations_.push_back(service_.add(key, [this](std::uint32_t id) {
            mainLoop_.async(lifetime_.bound([this, id] { deliver(id); }));
        }));
    }
}

void Hotkeys::deliver(std::uint32_t id) {
    if (!handler_) {
        return;
    }
    if (id == keepAwakeId) {
        handler_(Action::toggleKeepAwake);
    } else if (id == fanBoostId) {
        handler_(Action::toggleFanBoost);
    }
}

}  // namespace corvane
