#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/SerialQueue.h"
#include "platform/Volumes.h"

namespace corvane {

/// Volumes that are mounted when they are told to be; none to begin with. A touch takes no time, unless the
/// drive hangs. Main loop, whose queue carries the answers.
class SimulatedVolumes final : public Volumes {
public:
    /// `mainLoop` outlives the volumes.
    explicit SimulatedVolumes(SerialQueue& mainLoop) : mainLoop_(mainLoop) {}

    [[nodiscard]] std::vector<Volume> mounted() const override { return mounted_; }
    [[nodiscard]] bool isMounted(const std::string& path) const override {
        return std::any_of(mounted_.begin(), mounted_.end(),
                           [&](const Volume& volume) { return volume.path == path; });
    }
    void touch(const std::string& path, std::function<void()> done) override {
        touched_.push_back(path);
        if (const auto hanging = hanging_.find(path); hanging != hanging_.end()) {
            hanging->second.push_back(std::move(done));
        } else {
            mainLoop_.async(std::move(done));
        }
    }

    void setMounted(std::vector<Volume> mounted) { mounted_ = std::move(mounted); }

    /// From now on the drive does not answer, until it is let go.
    void hang(const std::string& path) { hanging_.try_emplace(path); }
    void letGo(const std::string& path) {
        auto waiting = hanging_.extract(path);
        if (!waiting.empty()) {
            for (std::function<void()>& done : waiting.mapped()) {
                mainLoop_.async(std::move(done));
            }
        }
    }

    /// Every path that a touch began with, oldest first.
    [[nodiscard]] const std::vector<std::string>& touched() const { return touched_; }

private:
    SerialQueue& mainLoop_;
    std::vector<Volume> mounted_;
    std::vector<std::string> touched_;
    std::map<std::string, std::vector<std::function<void()>>> hanging_;
};

}  // namespace corvane
