#include "platform/simulated/makeSimulatedSmc.h"

#include <optional>
#include <utility>

#include <fmt/format.h>

#include "platform/simulated/MacScenario.h"
#include "platform/simulated/ScenarioReader.h"
#include "platform/simulated/SimulatedMac.h"
#include "platform/simulated/SimulatedSmc.h"

namespace corvane {

namespace {

SimulatedMac::Options optionsOf(const Scenario& scenario) {
    return {.model = *findMacModel(scenario.model), .seed = scenario.seed};
}

/// Owns the machine and lets the control file change it before each exchange.
class ControlledSmc final : public SmcConnection {
public:
    ControlledSmc(std::function<BootTime()> clock, ScenarioReader reader, const Scenario& initial)
        : clock_(std::move(clock)),
          reader_(std::move(reader)),
          mac_(optionsOf(initial), clock_),
          connection_(mac_) {
        apply(initial);
    }

    std::int32_t open() override {
        followFile();
        return connection_.open();
    }

    std::int32_t exchange(SmcRecord& record) override {
        followFile();
        return connection_.exchange(record);
    }

    [[nodiscard]] const MacModel& model() const { return mac_.model(); }

private:
    void followFile() {
        if (const std::optional<Scenario> scenario = reader_.changed(clock_())) {
            apply(*scenario);
        }
    }

    void apply(const Scenario& scenario) {
        if (const std::optional<ScenarioError> error = applyScenario(scenario, mac_)) {
            reader_.reject(*error);
        }
    }

    std::function<BootTime()> clock_;
    ScenarioReader reader_;
    SimulatedMac mac_;
    SimulatedSmc connection_;
};

}  // namespace

std::unique_ptr<SmcConnection> makeSimulatedSmc(std::function<BootTime()> clock,
                                                const std::string& scenarioPath, Log& log) {
    ScenarioReader reader(scenarioSourceFor(scenarioPath), scenarioPath, log);
    const Scenario initial = reader.changed(clock()).value_or(Scenario{});
    auto smc = std::make_unique<ControlledSmc>(std::move(clock), std::move(reader), initial);
    log.write(fmt::format("Simulation: this is a simulated {}", smc->model().title));
    return smc;
}

}  // namespace corvane
