#include "platform/select/PlatformOptions.h"

#include <filesystem>
#include <optional>

#include <fmt/format.h>

namespace corvane {

namespace {

std::string valueOf(const PlatformOptions::Lookup& lookup, const char* name, const char* fallback) {
    const char* value = lookup(name);
    return value == nullptr || *value == '\0' ? fallback : value;
}

bool isFolder(const std::string& path) {
    std::error_code error;
    return path.starts_with('/') && std::filesystem::is_directory(path, error);
}

/// An address is a transport, a colon and what the transport needs.
bool isBus(const std::string& bus) {
    const std::size_t colon = bus.find(':');
    return bus == "system" || bus == "session" || (colon != std::string::npos && colon != 0);
}

}  // namespace

std::variant<PlatformOptions, std::string> PlatformOptions::fromEnvironment(const Lookup& lookup) {
    PlatformOptions options;
    const std::string smc = valueOf(lookup, "CORVANE_SMC", "auto");
    if (smc != "auto" && smc != "simulated") {
        return fmt::format("CORVANE_SMC is \"{}\"; it must be \"auto\" or \"simulated\"", smc);
    }
    options.smc = smc == "simulated" ? Smc::simulated : Smc::machine;

    const std::string sysfs = valueOf(lookup, "CORVANE_SYSFS", "");
    if (!sysfs.empty() && !isFolder(sysfs)) {
        return fmt::format("CORVANE_SYSFS is \"{}\"; it must be the absolute path of a folder", sysfs);
    }
    options.sysfsRoot = sysfs.empty() ? options.sysfsRoot : sysfs;
    options.helperBus = valueOf(lookup, "CORVANE_HELPER_BUS", "system");
    if (!isBus(options.helperBus)) {
        return fmt::format(
            "CORVANE_HELPER_BUS is \"{}\"; it must be \"system\", \"session\" or a D-Bus address",
            options.helperBus);
    }
    options.scenarioPath = valueOf(lookup, "CORVANE_SIMULATION", "");
    return options;
}

}  // namespace corvane
