#include <cmath>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "platform/simulated/MacScenario.h"
#include "platform/simulated/Scenario.h"
#include "tests/platform/simulated/SimulatedMacFixture.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;

Scenario right(std::string_view text) {
    auto parsed = parseScenario(text);
    if (const auto* error = std::get_if<ScenarioError>(&parsed)) {
        ADD_FAILURE() << error->line << ": " << error->what;
        return {};
    }
    return std::get<Scenario>(parsed);
}

ScenarioError wrong(std::string_view text) {
    const auto parsed = parseScenario(text);
    const auto* error = std::get_if<ScenarioError>(&parsed);
    if (error == nullptr) {
        ADD_FAILURE() << "taken as right: " << text;
        return {};
    }
    return *error;
}

TEST(Scenario, AnEmptyFileMeansTheDefaults) {
    for (const char* text : {"", "\n", "# nothing\n\n   \t\r\n", "#"}) {
        const Scenario scenario = right(text);
        EXPECT_EQ(scenario.model, "macbook-pro-16");
        EXPECT_EQ(scenario.seed, 1U);
        EXPECT_EQ(scenario.load, std::nullopt);
        EXPECT_EQ(scenario.ambient, MacHardware::defaultAmbient);
        EXPECT_TRUE(scenario.smcPresent);
        EXPECT_TRUE(scenario.keyRequests.empty());
    }
    EXPECT_EQ(Scenario{}.model, macModels().front().name);
}

TEST(Scenario, ReadsEverySetting) {
    const Scenario scenario = right(
        "# a hot day\n"
        "model = mac-mini   # no lid\r\n"
        "\tseed=18446744073709551615\n"
        "load = 37.5\n"
        "ambient = -3\n"
        "smc = absent");
    EXPECT_EQ(scenario.model, "mac-mini");
    EXPECT_EQ(scenario.seed, 18446744073709551615U);
    EXPECT_EQ(scenario.load, 37.5);
    EXPECT_EQ(scenario.ambient, -3.0);
    EXPECT_FALSE(scenario.smcPresent);
}

TEST(Scenario, TheLastLineOfANameCounts) {
    const Scenario scenario = right("load = 10\nload = 20\nsmc = absent\nsmc = present\n");
    EXPECT_EQ(scenario.load, 20.0);
    EXPECT_TRUE(scenario.smcPresent);
    EXPECT_EQ(right("load = 10\nload = idle\n").load, std::nullopt);
}

TEST(Scenario, ReadsEveryKeyRequest) {
    const auto faultOf = [](std::string_view text) {
        const Scenario scenario = right(text);
        EXPECT_EQ(scenario.keyRequests.size(), 1U);
        return std::get<KeyRequest::Fault>(scenario.keyRequests.at(0).request).fault;
    };
    EXPECT_EQ(faultOf("fault.Tp09 = vanished"), KeyFault::vanished());
    EXPECT_EQ(faultOf("fault.Tp09 = fails"), KeyFault::readFails());
    EXPECT_EQ(faultOf("fault.Tp09 = stale"), KeyFault::stale());
    EXPECT_EQ(faultOf("fault.Tp09 = spike 115"), KeyFault::spike(115.0F, 1));
    EXPECT_EQ(faultOf("fault.Tp09 = spike  -inf\t4"), KeyFault::spike(-INFINITY, 4));
    EXPECT_EQ(faultOf("fault.Tp09 = spike nan"), KeyFault::spike(NAN, 1));
    EXPECT_EQ(faultOf("fault.F0Tg = write-refused"), KeyFault::writeRefused());
    EXPECT_EQ(faultOf("fault.F0Md = never-automatic 3"), KeyFault::neverAutomatic(3));
    EXPECT_EQ(faultOf("fault.#KEY = none"), std::nullopt);

    const Scenario holds = right("\nhold.Tp* = 60.5\nhold.Tp09 = nan\nhold.Tp0A = none");
    ASSERT_EQ(holds.keyRequests.size(), 3U);
    EXPECT_EQ(holds.keyRequests[0].keys, "Tp*");
    EXPECT_EQ(holds.keyRequests[0].line, 2);
    EXPECT_EQ(std::get<KeyRequest::Hold>(holds.keyRequests[0].request).value, 60.5F);
    EXPECT_TRUE(std::isnan(std::get<KeyRequest::Hold>(holds.keyRequests[1].request).value.value_or(0.0F)));
    EXPECT_EQ(std::get<KeyRequest::Hold>(holds.keyRequests[2].request).value, std::nullopt);
}

TEST(Scenario, SaysWhatIsWrongAndWhere) {
    EXPECT_EQ(wrong("load = 10\n\nload 20\n").line, 3);
    EXPECT_EQ(wrong("load 20").what, "expected name = value, not \"load 20\"");
    EXPECT_EQ(wrong("model = toaster").what, "there is no model \"toaster\"");
    EXPECT_EQ(wrong("seed = -1").what, "seed is a whole number, not \"-1\"");
    EXPECT_EQ(wrong("load = 300.5").what, "load is idle or 0 to 300 (watts), not \"300.5\"");
    EXPECT_EQ(wrong("ambient = warm").what, "ambient is -20 to 60 (degrees Celsius), not \"warm\"");
    EXPECT_EQ(wrong("smc = no").what, "smc is present or absent, not \"no\"");
    EXPECT_EQ(wrong("lode = 3").what, "nothing is called \"lode\"");
    EXPECT_EQ(wrong("fault.Tp09 = broken").what, "there is no fault \"broken\"");
    EXPECT_EQ(wrong("hold.Tp09 = hot").what,
              "a key is held at a number, nan, inf, -inf or none, not \"hot\"");
}

TEST(Scenario, RefusesEveryValueOutOfRange) {
    for (const char* text : {"load = nan",
                             "load = -1",
                             "load = inf",
                             "load =",
                             "load = 5 W",
                             "ambient = -20.1",
                             "ambient = 60.1",
                             "ambient = nan",
                             "seed = 18446744073709551616",
                             "seed = 1.5",
                             "= 3",
                             "hold.Tp09 =",
                             "hold.Tp09 = 1e99",
                             "fault.Tp09 = spike",
                             "fault.Tp09 = spike x",
                             "fault.Tp09 = spike 1 0",
                             "fault.Tp09 = spike 1 2 3",
                             "fault.Tp09 = spike 1 -2",
                             "fault.F0Md = never-automatic",
                             "fault.F0Md = never-automatic 0",
                             "fault.F0Md = never-automatic 256",
                             "fault.Tp09 = stale 3",
                             "load = 0x10",
                             "Load = 3"}) {
        EXPECT_EQ(wrong(text).line, 1) << text;
    }
}

TEST(Scenario, MessagesCarryNoControlCharactersAndNoEndlessText) {
    EXPECT_EQ(wrong("lo\x1B[2Jad = 3").what, "nothing is called \"lo?[2Jad\"");
    EXPECT_EQ(wrong(std::string("l\0d = 3", 7)).what, "nothing is called \"l?d\"");
    EXPECT_LT(wrong(std::string(60000, 'x')).what.size(), 100U);
}

TEST(Scenario, RefusesATextThatIsTooLong) {
    EXPECT_EQ(right("load = 5\n" + std::string(largestScenario - 9, '\n')).load, 5.0);
    EXPECT_EQ(wrong(std::string(largestScenario + 1, '\n')).line, 0);
}

TEST(Scenario, AnyGarbageIsEitherRightOrReportedAtALine) {
    const std::string pieces[] = {
        "load", "=",     " ",    "\n",  "#",      "fault.", "hold.", "Tp09", "spike",
        "115",  "*",     ".",    "nan", "-",      "model",  "stale", "\r",   "never-automatic",
        "seed", "1e400", "none", "smc", "absent", "\t",     "Tp*",   "5"};
    std::mt19937 random(20240607);  // NOLINT(cert-msc51-cpp): the same run every time
    std::uniform_int_distribution<std::size_t> anyPiece(0, std::size(pieces) - 1);
    std::uniform_int_distribution<int> anyByte(0, 255);
    int wrongOnes = 0;
    int rightOnes = 0;
    MacOnVirtualTime machine(macBookPro16());
    for (int run = 0; run < 20000; ++run) {
        std::string text;
        for (int length = anyByte(random) % 12; length > 0; --length) {
            text += anyByte(random) < 8 ? std::string(1, static_cast<char>(anyByte(random)))
                                        : pieces[anyPiece(random)];
        }
        const auto parsed = parseScenario(text);
        if (const auto* error = std::get_if<ScenarioError>(&parsed)) {
            ++wrongOnes;
            ASSERT_GE(error->line, 1) << text;
            ASSERT_LE(error->line, 13) << text;
            ASSERT_FALSE(error->what.empty()) << text;
        } else {
            ++rightOnes;
            applyScenario(std::get<Scenario>(parsed), machine.mac);
        }
    }
    EXPECT_GT(wrongOnes, 1000);
    EXPECT_GT(rightOnes, 1000);
}

TEST(MacScenario, BringsARunningMachineToWhatItDescribes) {
    MacOnVirtualTime machine(macBookPro16());
    const auto apply = [&](std::string_view text) { return applyScenario(right(text), machine.mac); };
    EXPECT_FALSE(
        apply("load = 60\nhold.Tp* = 70\nhold.Tp09 = none\nfault.Te* = vanished\nfault.Te00 = none\n"));
    machine.time.advance(1h);
    EXPECT_NEAR(machine.mac.dieTemperature(), 90.0, 1.0);
    EXPECT_EQ(machine.smc.readFloat("Tp00"), 70.0F);
    EXPECT_GT(machine.smc.readFloat("Tp09").value_or(0.0F), 75.0F);
    EXPECT_EQ(machine.smc.readResult("Te01"), SmcResult::keyNotFound);
    EXPECT_EQ(machine.smc.readResult("Te00"), SmcResult::success);
    EXPECT_FALSE(apply("smc = absent"));
    EXPECT_EQ(machine.connection.open(), -1);
    EXPECT_FALSE(apply(""));
    machine.time.advance(1h);
    EXPECT_EQ(machine.connection.open(), 0);
    EXPECT_LT(machine.mac.dieTemperature(), 40.0);
    EXPECT_EQ(machine.smc.readResult("Te01"), SmcResult::success);
}

TEST(MacScenario, ChangesNothingWhenAKeyIsUnknownOrUnfit) {
    MacOnVirtualTime machine(macBookPro16());
    const auto lineOf = [&](std::string_view text) {
        const auto error = applyScenario(right(text), machine.mac);
        return error ? error->line : -1;
    };
    EXPECT_EQ(lineOf("smc = absent\nhold.Tp09 = 99\nfault.Tp99 = stale\n"), 3);
    EXPECT_EQ(lineOf("smc = absent\nfault. = stale\n"), 2);
    EXPECT_EQ(lineOf("smc = absent\nfault.Tp09 = never-automatic 1\n"), 2);
    EXPECT_EQ(lineOf("smc = absent\nfault.F0Mn = write-refused\n"), 2);
    EXPECT_TRUE(machine.mac.isSmcPresent());
    EXPECT_NE(machine.smc.readFloat("Tp09"), 99.0F);
}

TEST(MacScenario, AFaultThatIsStillAskedForGoesOn) {
    MacOnVirtualTime machine(macBookPro16());
    const auto apply = [&](std::string_view text) { return applyScenario(right(text), machine.mac); };
    EXPECT_FALSE(apply("hold.T* = 60\nfault.Tp09 = spike 115 2\nfault.Te00 = stale"));
    EXPECT_EQ(machine.smc.readFloat("Tp09"), 115.0F);
    EXPECT_FALSE(apply("hold.T* = 65\nfault.Tp09 = spike 115 2\nfault.Te00 = stale"));
    EXPECT_EQ(machine.smc.readFloat("Tp09"), 115.0F);
    EXPECT_EQ(machine.smc.readFloat("Tp09"), 65.0F) << "the spike has not begun anew";
    EXPECT_FALSE(apply("hold.T* = 65\nfault.Tp09 = spike 114 2"));
    EXPECT_EQ(machine.smc.readFloat("Tp09"), 114.0F);
}

}  // namespace
}  // namespace corvane
