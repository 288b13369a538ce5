#pragma once

#include <array>
#include <map>
#include <optional>
#include <set>
#include <string_view>

#include "app/shell/Lang.h"
#include "platform/PowerAssertions.h"

namespace corvane {

/// What one owner asks the system's power management not to do: at most one assertion per kind of sleep.
/// Owners do not touch each other's; the computer stays awake as long as any of them holds a kind. What an
/// owner still holds when it goes is left to the system, which drops it with the process. Main loop.
class SleepAssertions {
public:
    /// In the order that every walk over all kinds follows.
    enum class Kind { system, display, network };
    using Kinds = std::set<Kind>;
    static constexpr std::array allKinds{Kind::system, Kind::display, Kind::network};

    /// "system", "display", "network".
    [[nodiscard]] static std::string_view rawValue(Kind kind);
    /// None for any other text; upper and lower case differ.
    [[nodiscard]] static std::optional<Kind> kindFromRawValue(std::string_view text);
    /// What the kind is called in the user's language.
    [[nodiscard]] static const char* label(Kind kind, const Lang& lang);

    /// `power` outlives the holder.
    explicit SleepAssertions(PowerAssertions& power) : power_(power) {}

    /// Takes the kind, unless it is held. False when the system refuses; nothing has changed then.
    bool start(Kind kind);

    /// Lets go of the kind, if it is held.
    void stop(Kind kind);

    void stopAll();

    /// By kind, the assertions that are held.
    [[nodiscard]] const std::map<Kind, PowerAssertions::Id>& ids() const { return ids_; }
    [[nodiscard]] bool holds(Kind kind) const { return ids_.contains(kind); }
    /// The keys of `ids`.
    [[nodiscard]] Kinds heldKinds() const;

private:
    PowerAssertions& power_;
    std::map<Kind, PowerAssertions::Id> ids_;
};

}  // namespace corvane
