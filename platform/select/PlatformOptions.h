#pragma once

#include <functional>
#include <string>
#include <variant>

namespace corvane {

/// Which machine a role runs on, as the environment asks for it.
struct PlatformOptions {
    enum class Smc { machine, simulated };

    /// CORVANE_SMC: "auto" (this machine's own, the default) or "simulated".
    Smc smc = Smc::machine;
    /// CORVANE_SYSFS: a folder read in place of /sys. Linux; a Mac has no such tree and looks for none.
    std::string sysfsRoot = "/sys";
    /// CORVANE_HELPER_BUS: "system", "session", or a D-Bus address. Linux; a Mac has one way to the helper.
    std::string helperBus = "system";
    /// CORVANE_SIMULATION: the simulated Mac's control file; empty for none.
    std::string scenarioPath;

    /// Null for a variable that is not set.
    using Lookup = std::function<const char*(const char* name)>;

    /// The options, or one line that says which variable is wrong and how. A variable that is set but empty
    /// counts as not set.
    static std::variant<PlatformOptions, std::string> fromEnvironment(const Lookup& lookup);
};

}  // namespace corvane
