#pragma once

#include <optional>
#include <vector>

#include "app/popover/Popover.h"

namespace corvane {

/// A panel that remembers where it was opened.
class RecordingPopover final : public Popover {
public:
    using Anchor = std::optional<QPoint>;

    [[nodiscard]] bool isShown() const override { return isShown_; }
    void show(Anchor anchor) override {
        isShown_ = true;
        openings.push_back(anchor);
    }
    void close() override { isShown_ = false; }
    void retranslate() override { ++timesRetranslated; }
    [[nodiscard]] bool wasClosedByThisClick(Anchor /*anchor*/) const override { return isClickUsedUp; }

    std::vector<Anchor> openings;
    bool isClickUsedUp = false;
    int timesRetranslated = 0;

private:
    bool isShown_ = false;
};

}  // namespace corvane
