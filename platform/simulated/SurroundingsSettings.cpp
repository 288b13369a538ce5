#include "platform/simulated/SurroundingsSettings.h"

#include <array>
#include <string>
#include <utility>

namespace corvane {

namespace {

Objection setBattery(Surroundings& surroundings, std::string_view value) {
    const std::optional<int> charge = numberWithin(value, 0, 100);
    if (!charge && value != "none") {
        return "battery is none or 0 to 100 (percent), not " + quoted(value);
    }
    surroundings.battery = charge;
    return std::nullopt;
}

Objection setPower(Surroundings& surroundings, std::string_view value) {
    if (value != "mains" && value != "battery") {
        return "power is mains or battery, not " + quoted(value);
    }
    surroundings.onMains = value == "mains";
    return std::nullopt;
}

Objection setThermal(Surroundings& surroundings, std::string_view value) {
    constexpr std::array<std::pair<std::string_view, ThermalState>, 4> states{{
        {"nominal", ThermalState::nominal},
        {"fair", ThermalState::fair},
        {"serious", ThermalState::serious},
        {"critical", ThermalState::critical},
    }};
    for (const auto& [name, state] : states) {
        if (value == name) {
            surroundings.thermalState = state;
            return std::nullopt;
        }
    }
    return "thermal is nominal, fair, serious or critical, not " + quoted(value);
}

Objection setDisplays(Surroundings& surroundings, std::string_view value) {
    std::vector<Display> displays;
    std::string_view rest = value == "none" ? std::string_view() : value;
    for (std::string_view word = nextWord(rest); !word.empty(); word = nextWord(rest)) {
        if (word != "built-in" && word != "external") {
            return "displays are none, or each built-in or external, not " + quoted(word);
        }
        displays.push_back({.isBuiltIn = word == "built-in"});
    }
    surroundings.displays = std::move(displays);
    return std::nullopt;
}

Objection setApplication(Surroundings& surroundings, std::string_view identifier, std::string_view value) {
    if (value != "running" && value != "stopped") {
        return "an application is running or stopped, not " + quoted(value);
    }
    if (value == "running") {
        surroundings.applications.emplace(identifier);
    } else {
        surroundings.applications.erase(std::string(identifier));
    }
    return std::nullopt;
}

Objection setDrive(Surroundings& surroundings, std::string_view volume, std::string_view value) {
    const std::string name(volume);
    if (value == "unmounted") {
        surroundings.drives.erase(name);
    } else if (value == "mounted") {
        surroundings.drives.insert_or_assign(name, Surroundings::Drive::answers);
    } else if (value == "hangs") {
        surroundings.drives.insert_or_assign(name, Surroundings::Drive::hangs);
    } else {
        return "a drive is mounted, hangs or unmounted, not " + quoted(value);
    }
    return std::nullopt;
}

struct Setting {
    std::string_view name;
    Objection (*apply)(Surroundings&, std::string_view value);
};

constexpr std::array settings{
    Setting{"battery", setBattery},
    Setting{"power", setPower},
    Setting{"thermal", setThermal},
    Setting{"displays", setDisplays},
};

/// Of things that have a name of their own, which follows the prefix.
struct Section {
    std::string_view prefix;
    Objection (*apply)(Surroundings&, std::string_view name, std::string_view value);
};

constexpr std::array sections{Section{"application.", setApplication}, Section{"drive.", setDrive}};

}  // namespace

Objection takeSurroundings(Surroundings& surroundings, std::string_view name, std::string_view value) {
    for (const Setting& setting : settings) {
        if (name == setting.name) {
            return setting.apply(surroundings, value);
        }
    }
    for (const Section& section : sections) {
        if (name.starts_with(section.prefix) && name.size() > section.prefix.size()) {
            return section.apply(surroundings, name.substr(section.prefix.size()), value);
        }
    }
    return "nothing is called " + quoted(name);
}

}  // namespace corvane
