#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace corvane {

/// The system's power management, asked not to let the computer fall asleep for want of a user. An assertion
/// ends with its release, and at the latest with the process in whatever way that ends. Belongs to the main
/// loop and does not block it.
class PowerAssertions {
public:
    using Id = std::uint32_t;

    // The types there are.
    static constexpr const char* preventUserIdleSystemSleep = "PreventUserIdleSystemSleep";
    static constexpr const char* preventUserIdleDisplaySleep = "PreventUserIdleDisplaySleep";
    /// The computer stays reachable; where nothing is made for that, the system is kept awake.
    static constexpr const char* networkClientActive = "NetworkClientActive";

    PowerAssertions() = default;
    PowerAssertions(const PowerAssertions&) = delete;
    PowerAssertions& operator=(const PowerAssertions&) = delete;
    virtual ~PowerAssertions() = default;

    /// Takes an assertion of one type; `name` (UTF-8) is what the system shows for it. Any number may be held
    /// at once, of the same type and name too. None when nothing could be taken.
    [[nodiscard]] virtual std::optional<Id> create(std::string_view type, std::string_view name) = 0;

    /// Ends one assertion; passed over when there is none of this id.
    virtual void release(Id id) = 0;
};

}  // namespace corvane
