#include <map>
#include <string>

#include <gtest/gtest.h>

#include "platform/select/PlatformOptions.h"

namespace corvane {
namespace {

using Environment = std::map<std::string, std::string>;

std::variant<PlatformOptions, std::string> optionsIn(const Environment& environment) {
    return PlatformOptions::fromEnvironment([&](const char* name) {
        const auto entry = environment.find(name);
        return entry == environment.end() ? nullptr : entry->second.c_str();
    });
}

/// The options; a mistake fails the test.
PlatformOptions goodOptionsIn(const Environment& environment) {
    const auto options = optionsIn(environment);
    if (const auto* mistake = std::get_if<std::string>(&options)) {
        ADD_FAILURE() << *mistake;
        return {};
    }
    return std::get<PlatformOptions>(options);
}

/// The mistake; none is "no mistake".
std::string mistakeIn(const Environment& environment) {
    const auto options = optionsIn(environment);
    const auto* mistake = std::get_if<std::string>(&options);
    return mistake == nullptr ? "no mistake" : *mistake;
}

TEST(PlatformOptions, AskForThisMachineOnTheSystemBusByDefault) {
    const PlatformOptions options = goodOptionsIn({});
    EXPECT_EQ(options.smc, PlatformOptions::Smc::machine);
    EXPECT_EQ(options.sysfsRoot, "/sys");
    EXPECT_EQ(options.helperBus, "system");
    EXPECT_EQ(options.scenarioPath, "");
}

TEST(PlatformOptions, TakeAnEmptyVariableForOneThatIsNotSet) {
    const PlatformOptions options = goodOptionsIn(
        {{"CORVANE_SMC", ""}, {"CORVANE_SYSFS", ""}, {"CORVANE_HELPER_BUS", ""}, {"CORVANE_SIMULATION", ""}});
    EXPECT_EQ(options.smc, PlatformOptions::Smc::machine);
    EXPECT_EQ(options.sysfsRoot, "/sys");
    EXPECT_EQ(options.helperBus, "system");
    EXPECT_EQ(options.scenarioPath, "");
}

TEST(PlatformOptions, TakeWhatIsSet) {
    const PlatformOptions options = goodOptionsIn({{"CORVANE_SMC", "simulated"},
                                                   {"CORVANE_SYSFS", "/"},
                                                   {"CORVANE_HELPER_BUS", "unix:path=/run/bus"},
                                                   {"CORVANE_SIMULATION", "not/there/yet"}});
    EXPECT_EQ(options.smc, PlatformOptions::Smc::simulated);
    EXPECT_EQ(options.sysfsRoot, "/");
    EXPECT_EQ(options.helperBus, "unix:path=/run/bus");
    EXPECT_EQ(options.scenarioPath, "not/there/yet");
}

TEST(PlatformOptions, TakeTheNamedBuses) {
    EXPECT_EQ(goodOptionsIn({{"CORVANE_HELPER_BUS", "system"}}).helperBus, "system");
    EXPECT_EQ(goodOptionsIn({{"CORVANE_HELPER_BUS", "session"}}).helperBus, "session");
    EXPECT_EQ(goodOptionsIn({{"CORVANE_SMC", "auto"}}).smc, PlatformOptions::Smc::machine);
}

TEST(PlatformOptions, RefuseAnUnknownSmc) {
    for (const std::string smc : {"Simulated", "simulated ", "real", "1", "\xff\xfe"}) {
        EXPECT_EQ(mistakeIn({{"CORVANE_SMC", smc}}),
                  "CORVANE_SMC is \"" + smc + "\"; it must be \"auto\" or \"simulated\"");
    }
}

TEST(PlatformOptions, RefuseASysfsThatIsNoAbsoluteFolder) {
    for (const std::string folder : {".", "sys", "/no/such/folder", "/dev/null", " /sys"}) {
        EXPECT_EQ(mistakeIn({{"CORVANE_SYSFS", folder}}),
                  "CORVANE_SYSFS is \"" + folder + "\"; it must be the absolute path of a folder");
    }
}

TEST(PlatformOptions, RefuseASysfsThatCannotBeLookedAt) {
    const std::string tooLong = "/" + std::string(5000, 'x');
    EXPECT_EQ(mistakeIn({{"CORVANE_SYSFS", tooLong}}),
              "CORVANE_SYSFS is \"" + tooLong + "\"; it must be the absolute path of a folder");
}

TEST(PlatformOptions, RefuseABusThatIsNeitherNamedNorAnAddress) {
    for (const std::string bus : {"System", "user", ":path=/run/bus", "/run/bus", ":"}) {
        EXPECT_EQ(
            mistakeIn({{"CORVANE_HELPER_BUS", bus}}),
            "CORVANE_HELPER_BUS is \"" + bus + "\"; it must be \"system\", \"session\" or a D-Bus address");
    }
}

TEST(PlatformOptions, TellOneMistakeAtATime) {
    EXPECT_EQ(mistakeIn({{"CORVANE_SMC", "x"}, {"CORVANE_SYSFS", "x"}, {"CORVANE_HELPER_BUS", "x"}}),
              "CORVANE_SMC is \"x\"; it must be \"auto\" or \"simulated\"");
}

}  // namespace
}  // namespace corvane
