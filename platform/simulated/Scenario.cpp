#include "platform/simulated/Scenario.h"

#include <algorithm>
#include <array>
#include <utility>

#include <fmt/format.h>

#include "platform/simulated/MacModel.h"
#include "platform/simulated/ScenarioText.h"
#include "platform/simulated/SurroundingsSettings.h"

namespace corvane {

namespace {

Objection setModel(Scenario& scenario, std::string_view value) {
    if (findMacModel(value) == nullptr) {
        return "there is no model " + quoted(value);
    }
    scenario.model = value;
    return std::nullopt;
}

Objection setSeed(Scenario& scenario, std::string_view value) {
    const auto seed = parsedNumber<std::uint64_t>(value);
    if (!seed) {
        return "seed is a whole number, not " + quoted(value);
    }
    scenario.seed = *seed;
    return std::nullopt;
}

Objection setLoad(Scenario& scenario, std::string_view value) {
    if (value == "idle") {
        scenario.load.reset();
        return std::nullopt;
    }
    const std::optional<double> watts = numberWithin(value, 0.0, 300.0);
    if (!watts) {
        return "load is idle or 0 to 300 (watts), not " + quoted(value);
    }
    scenario.load = watts;
    return std::nullopt;
}

Objection setAmbient(Scenario& scenario, std::string_view value) {
    const std::optional<double> celsius = numberWithin(value, -20.0, 60.0);
    if (!celsius) {
        return "ambient is -20 to 60 (degrees Celsius), not " + quoted(value);
    }
    scenario.ambient = *celsius;
    return std::nullopt;
}

Objection setSmc(Scenario& scenario, std::string_view value) {
    if (value != "present" && value != "absent") {
        return "smc is present or absent, not " + quoted(value);
    }
    scenario.smcPresent = value == "present";
    return std::nullopt;
}

struct Setting {
    std::string_view name;
    Objection (*apply)(Scenario&, std::string_view value);
};

constexpr std::array settings{
    Setting{"model", setModel},     Setting{"seed", setSeed}, Setting{"load", setLoad},
    Setting{"ambient", setAmbient}, Setting{"smc", setSmc},
};

Objection parseHold(std::string_view value, KeyRequest& request) {
    const std::optional<float> number = parsedNumber<float>(value);
    if (!number && value != "none") {
        return "a key is held at a number, nan, inf, -inf or none, not " + quoted(value);
    }
    request.request = KeyRequest::Hold{number};
    return std::nullopt;
}

Objection parseSpike(std::string_view arguments, KeyRequest& request) {
    const std::optional<float> value = parsedNumber<float>(nextWord(arguments));
    const std::optional<std::uint32_t> reads =
        arguments.empty() ? 1U : parsedNumber<std::uint32_t>(arguments);
    if (!value || !reads || *reads == 0) {
        return "spike takes a value and, if it is not 1, a number of reads";
    }
    request.request = KeyRequest::Fault{KeyFault::spike(*value, *reads)};
    return std::nullopt;
}

Objection parseNeverAutomatic(std::string_view arguments, KeyRequest& request) {
    const std::optional<std::uint8_t> mode = parsedNumber<std::uint8_t>(arguments);
    if (!mode || *mode == 0) {
        return "never-automatic takes the mode to read instead, 1 to 255";
    }
    request.request = KeyRequest::Fault{KeyFault::neverAutomatic(*mode)};
    return std::nullopt;
}

Objection parsePlainFault(std::string_view value, KeyRequest& request) {
    constexpr std::array<std::pair<std::string_view, KeyFault>, 4> plainFaults{{
        {"vanished", KeyFault::vanished()},
        {"fails", KeyFault::readFails()},
        {"stale", KeyFault::stale()},
        {"write-refused", KeyFault::writeRefused()},
    }};
    if (value == "none") {
        request.request = KeyRequest::Fault{std::nullopt};
        return std::nullopt;
    }
    for (const auto& [word, fault] : plainFaults) {
        if (value == word) {
            request.request = KeyRequest::Fault{fault};
            return std::nullopt;
        }
    }
    return "there is no fault " + quoted(value);
}

Objection parseFault(std::string_view value, KeyRequest& request) {
    std::string_view arguments = value;
    const std::string_view word = nextWord(arguments);
    if (word == "spike") {
        return parseSpike(arguments, request);
    }
    if (word == "never-automatic") {
        return parseNeverAutomatic(arguments, request);
    }
    return parsePlainFault(value, request);
}

struct KeySection {
    std::string_view prefix;
    Objection (*parse)(std::string_view value, KeyRequest& request);
};

constexpr std::array keySections{KeySection{"hold.", parseHold}, KeySection{"fault.", parseFault}};

Objection takeSetting(Scenario& scenario, int line, std::string_view name, std::string_view value) {
    for (const Setting& setting : settings) {
        if (name == setting.name) {
            return setting.apply(scenario, value);
        }
    }
    for (const KeySection& section : keySections) {
        if (name.starts_with(section.prefix)) {
            KeyRequest request{line, std::string(name.substr(section.prefix.size())), {}};
            Objection objection = section.parse(value, request);
            scenario.keyRequests.push_back(std::move(request));
            return objection;
        }
    }
    return takeSurroundings(scenario.surroundings, name, value);
}

Objection takeLine(Scenario& scenario, int line, std::string_view text) {
    const std::string_view content = trimmed(withoutComment(text));
    if (content.empty()) {
        return std::nullopt;
    }
    const std::size_t equals = content.find('=');
    if (equals == std::string_view::npos) {
        return "expected name = value, not " + quoted(content);
    }
    return takeSetting(scenario, line, trimmed(content.substr(0, equals)),
                       trimmed(content.substr(equals + 1)));
}

}  // namespace

std::variant<Scenario, ScenarioError> parseScenario(std::string_view text) {
    if (text.size() > largestScenario) {
        return ScenarioError{0, fmt::format("it has more than {} bytes", largestScenario)};
    }
    Scenario scenario;
    for (int line = 1; !text.empty(); ++line) {
        const std::string_view content = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), content.size() + 1));
        if (Objection objection = takeLine(scenario, line, content)) {
            return ScenarioError{line, std::move(*objection)};
        }
    }
    return scenario;
}

}  // namespace corvane
