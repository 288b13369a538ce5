#include "platform/simulated/ScenarioReader.h"

#include <utility>
#include <variant>

#include <fmt/format.h>

namespace corvane {

ScenarioReader::ScenarioReader(std::unique_ptr<ScenarioSource> source, std::string name, Log& log)
    : source_(std::move(source)), name_(std::move(name)), log_(log) {}

std::optional<Scenario> ScenarioReader::changed(BootTime now) {
    if (lookedAt_ && now - *lookedAt_ < interval) {
        return std::nullopt;
    }
    lookedAt_ = now;
    const std::optional<ScenarioSource::Stamp> stamp = source_->stamp();
    if (!stamp || stamp == seen_) {
        return std::nullopt;
    }
    seen_ = stamp;
    const std::optional<std::string> text = source_->read(largestScenario + 1);
    if (!text) {
        reject({0, "it cannot be read"});
        return std::nullopt;
    }
    auto parsed = parseScenario(*text);
    if (const auto* error = std::get_if<ScenarioError>(&parsed)) {
        reject(*error);
        return std::nullopt;
    }
    return std::get<Scenario>(std::move(parsed));
}

void ScenarioReader::reject(const ScenarioError& error) {
    const std::string place = error.line > 0 ? fmt::format("{}:{}", name_, error.line) : name_;
    log_.write(fmt::format("Simulation: {}: {}; the file is not applied", place, error.what));
}

}  // namespace corvane
