#pragma once

#include <optional>
#include <utility>
#include <vector>

#include <CoreGraphics/CoreGraphics.h>

#include "tests/platform/macos/fakes/Current.h"

namespace corvane {

/// The window server of a Mac with its displays; the computer's own to begin with. One at a time, main
/// thread.
class FakeDisplays {
public:
    struct FakeDisplay {
        CGDirectDisplayID id;
        bool isBuiltIn;
    };

    FakeDisplays() = default;
    FakeDisplays(const FakeDisplays&) = delete;
    FakeDisplays& operator=(const FakeDisplays&) = delete;

    /// Changes them; then the application is told, once.
    void set(std::vector<FakeDisplay> displays);

    /// Fails from now on, for so many displays asked for or more: 0 for every question.
    void failListing(std::uint32_t fromMaximum) { failsFrom_ = fromMaximum; }
    /// Changes the displays after they have been counted the next time.
    void changeAfterCounting(std::vector<FakeDisplay> displays) { afterCounting_ = std::move(displays); }

    // For CoreGraphics' functions.
    CGError list(std::uint32_t maximum, CGDirectDisplayID* ids, std::uint32_t& count);
    [[nodiscard]] bool isBuiltIn(CGDirectDisplayID id) const;

private:
    std::vector<FakeDisplay> displays_ = {{.id = 1, .isBuiltIn = true}};
    std::optional<std::uint32_t> failsFrom_;
    std::optional<std::vector<FakeDisplay>> afterCounting_;
    Current<FakeDisplays> current_{*this};
};

}  // namespace corvane
