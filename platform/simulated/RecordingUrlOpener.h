#pragma once

#include <string>
#include <vector>

#include "platform/UrlOpener.h"

namespace corvane {

/// Keeps what was to be opened. Main loop.
class RecordingUrlOpener final : public UrlOpener {
public:
    void open(const std::string& url) override { opened_.push_back(url); }

    /// Oldest first.
    [[nodiscard]] const std::vector<std::string>& opened() const { return opened_; }

private:
    std::vector<std::string> opened_;
};

}  // namespace corvane
