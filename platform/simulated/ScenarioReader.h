#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/Log.h"
#include "platform/SerialQueue.h"
#include "platform/simulated/Scenario.h"
#include "platform/simulated/ScenarioSource.h"

namespace corvane {

/// Watches a control file. A text that is wrong is reported in one line, and passed over.
class ScenarioReader {
public:
    /// The file is looked at no more often than this.
    static constexpr Duration interval = std::chrono::milliseconds(100);

    /// `name` is what messages call the file. `log` outlives the reader.
    ScenarioReader(std::unique_ptr<ScenarioSource> source, std::string name, Log& log);

    /// What the file says, if it has changed since the last call and is right; the first call always looks. A
    /// file that is gone has not changed. Allocates only when the file has changed.
    std::optional<Scenario> changed(BootTime now);

    /// Reports that what `changed` returned cannot be done after all.
    void reject(const ScenarioError& error);

private:
    std::unique_ptr<ScenarioSource> source_;
    std::string name_;
    Log& log_;
    std::optional<BootTime> lookedAt_;
    std::optional<ScenarioSource::Stamp> seen_;
};

}  // namespace corvane
