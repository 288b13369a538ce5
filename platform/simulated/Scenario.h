#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/simulated/KeyFault.h"
#include "platform/simulated/Surroundings.h"

namespace corvane {

/// What is wrong with a control file, in English.
struct ScenarioError {
    /// Counted from 1; 0 when it is about the whole file.
    int line = 0;
    std::string what;
};

/// What one line of a control file asks of a key, or of all keys that begin alike ("Tp*").
struct KeyRequest {
    /// Ends both kinds with `std::nullopt`.
    struct Hold {
        std::optional<float> value;
    };
    struct Fault {
        std::optional<KeyFault> fault;
    };

    int line = 0;
    std::string keys;
    std::variant<Hold, Fault> request;
};

/// Everything a control file says about the simulated computer; what it does not mention has its default.
struct Scenario {
    /// One of `macModels`; counts when the machine is made.
    std::string model = "macbook-pro-16";
    /// Of the noise; counts when the machine is made.
    std::uint64_t seed = 1;
    /// Heat, W; absent: the model's idle heat.
    std::optional<double> load;
    /// °C.
    double ambient = 25.0;
    bool smcPresent = true;
    /// In the order of the file: later ones count.
    std::vector<KeyRequest> keyRequests;
    Surroundings surroundings;
};

/// A control file may have this many bytes.
inline constexpr std::size_t largestScenario = 65536;

/// Reads a control file's text: lines "name = value", the last one of a name counts; "#" at the beginning of
/// a line or after a blank begins a comment. Anything else is an error.
std::variant<Scenario, ScenarioError> parseScenario(std::string_view text);

}  // namespace corvane
