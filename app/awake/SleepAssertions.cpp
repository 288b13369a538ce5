#include "app/awake/SleepAssertions.h"

#include <algorithm>
#include <cstddef>

namespace corvane {

namespace {

struct KindTexts {
    std::string_view rawValue;
    const char* type;
    const char* name;
    const char* german;
    const char* english;
};

/// In the order of the kinds.
constexpr std::array<KindTexts, SleepAssertions::allKinds.size()> texts{{
    {"system", PowerAssertions::preventUserIdleSystemSleep, "Wakewell: prevent system sleep",
     "System wach halten", "Keep system awake"},
    {"display", PowerAssertions::preventUserIdleDisplaySleep, "Wakewell: prevent display sleep",
     "Display wach halten", "Keep display awake"},
    {"network", PowerAssertions::networkClientActive, "Wakewell: keep network active",
     "Netzwerk aktiv halten", "Keep network active"},
}};

const KindTexts& textsOf(SleepAssertions::Kind kind) {
    return texts.at(static_cast<std::size_t>(kind));
}

}  // namespace

std::string_view SleepAssertions::rawValue(Kind kind) {
    return textsOf(kind).rawValue;
}

std::optional<SleepAssertions::Kind> SleepAssertions::kindFromRawValue(std::string_view text) {
    const auto* found = std::find_if(allKinds.begin(), allKinds.end(),
                                     [&](Kind kind) { return textsOf(kind).rawValue == text; });
    return found == allKinds.end() ? std::nullopt : std::optional(*found);
}

const char* SleepAssertions::label(Kind kind, const Lang& lang) {
    return lang.text(textsOf(kind).german, textsOf(kind).english);
}

bool SleepAssertions::start(Kind kind) {
    if (holds(kind)) {
        return true;
    }
    const std::optional<PowerAssertions::Id> id = power_.create(textsOf(kind).type, textsOf(kind).name);
    if (id) {
        ids_.emplace(kind, *id);
    }
    return id.has_value();
}

void SleepAssertions::stop(Kind kind) {
    if (const auto held = ids_.find(kind); held != ids_.end()) {
        power_.release(held->second);
        ids_.erase(held);
    }
}

void SleepAssertions::stopAll() {
    for (const Kind kind : heldKinds()) {
        stop(kind);
    }
}

SleepAssertions::Kinds SleepAssertions::heldKinds() const {
    Kinds kinds;
    for (const auto& [kind, id] : ids_) {
        kinds.insert(kind);
    }
    return kinds;
}

}  // namespace corvane
