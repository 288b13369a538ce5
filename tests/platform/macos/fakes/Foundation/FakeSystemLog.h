#pragma once

#include <string>
#include <vector>

#include "tests/platform/macos/fakes/Current.h"

namespace corvane {

/// What this process has told the system's log. One at a time, one thread at a time.
class FakeSystemLog {
public:
    [[nodiscard]] const std::vector<std::string>& lines() const { return lines_; }
    /// How many lines have `text` in them.
    [[nodiscard]] std::size_t count(const std::string& text) const;

    void add(std::string line) { lines_.push_back(std::move(line)); }

private:
    std::vector<std::string> lines_;
    Current<FakeSystemLog> current_{*this};
};

}  // namespace corvane
