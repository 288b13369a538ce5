#include "app/menu/ProfileTexts.h"

namespace corvane {

const char* ProfileTexts::name(CoolingProfile::Kind kind, const Lang& lang) {
    switch (kind) {
        case CoolingProfile::Kind::silent:
            return lang.text("Leise", "Silent");
        case CoolingProfile::Kind::balanced:
            return lang.text("Ausgewogen", "Balanced");
        case CoolingProfile::Kind::max:
            return "Max";
    }
    return "";
}

const char* ProfileTexts::blurb(CoolingProfile::Kind kind, const Lang& lang) {
    switch (kind) {
        case CoolingProfile::Kind::silent:
            return lang.text("Leise — hält den Mac etwas kühler als macOS, ohne laut zu werden.",
                             "Quiet — runs a bit cooler than macOS without getting loud.");
        case CoolingProfile::Kind::balanced:
            return lang.text("Hält den Mac angenehm kühl bei moderater Lautstärke.",
                             "Keeps the Mac comfortably cool at moderate noise.");
        case CoolingProfile::Kind::max:
            return lang.text("Maximale Kühlung — hörbarer Grundpegel, hält den Mac kalt.",
                             "Maximum cooling — audible baseline, keeps the Mac cold.");
    }
    return "";
}

}  // namespace corvane
