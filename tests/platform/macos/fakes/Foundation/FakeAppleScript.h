#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tests/platform/macos/fakes/Current.h"

namespace corvane {

/// What runs AppleScript. One at a time; main thread, as its real class is.
class FakeAppleScript {
public:
    struct Error {
        std::optional<int> number = std::nullopt;
        std::optional<std::string> message = std::nullopt;
        /// Its values are of other classes than they should.
        bool isNonsense = false;
        /// There is no dictionary at all.
        bool isMissing = false;
    };

    /// From now on no source is taken for a script.
    void refuseSources() { isRefusing_ = true; }
    /// How scripts end from now on; none: well.
    void endWith(std::optional<Error> error) { error_ = std::move(error); }
    /// What happens while a script runs.
    void whileRunning(std::function<void()> work) { work_ = std::move(work); }
    /// What was run, oldest first.
    [[nodiscard]] const std::vector<std::string>& sources() const { return sources_; }

    // For the framework's class.
    [[nodiscard]] bool isRefusing() const { return isRefusing_; }
    std::optional<Error> run(const std::string& source);

private:
    bool isRefusing_ = false;
    std::optional<Error> error_;
    std::function<void()> work_;
    std::vector<std::string> sources_;
    Current<FakeAppleScript> current_{*this};
};

}  // namespace corvane
