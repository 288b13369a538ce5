#include "platform/simulated/MacScenario.h"

#include <vector>

#include <fmt/format.h>

namespace corvane {

namespace {

/// Adds what `request` asks of one key to `condition`. False when that makes no sense for the key.
bool add(const KeyRequest& request, const MacKey& key, KeyCondition& condition) {
    if (const auto* hold = std::get_if<KeyRequest::Hold>(&request.request)) {
        condition.held = hold->value;
        return true;
    }
    const std::optional<KeyFault>& fault = std::get<KeyRequest::Fault>(request.request).fault;
    condition.fault = fault;
    return !fault || canHave(key, *fault);
}

std::optional<ScenarioError> addToAll(const KeyRequest& request, std::span<const MacKey> keys,
                                      std::vector<KeyCondition>& conditions) {
    bool found = false;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (!isMeantBy(keys[i].key.name, request.keys)) {
            continue;
        }
        found = true;
        if (!add(request, keys[i], conditions[i])) {
            return ScenarioError{request.line, "that fault is not for such a key"};
        }
    }
    if (!found) {
        return ScenarioError{request.line, "this Mac has no such key"};
    }
    return std::nullopt;
}

}  // namespace

std::optional<ScenarioError> applyScenario(const Scenario& scenario, SimulatedMac& mac) {
    std::vector<KeyCondition> conditions(mac.allKeys().size());
    for (const KeyRequest& request : scenario.keyRequests) {
        if (auto error = addToAll(request, mac.allKeys(), conditions)) {
            return error;
        }
    }
    mac.setLoad(scenario.load.value_or(mac.model().idleWatts));
    mac.setAmbient(scenario.ambient);
    mac.setSmcPresent(scenario.smcPresent);
    mac.setConditions(conditions);
    return std::nullopt;
}

}  // namespace corvane
