#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>

namespace corvane {

/// The cooling profiles a user can choose: comfort curves on top of `ThermalCurve`, from which the helper
/// always takes the larger demand.
///
/// Constants and pure functions; any thread. Temperatures in °C, percentages 0...100.
struct CoolingProfile {
    /// In order of strength; the comparison operators of the enumeration compare strength.
    enum class Kind { silent, balanced, max };

    static constexpr std::array<Kind, 3> allKinds = {Kind::silent, Kind::balanced, Kind::max};

    /// One corner of a curve.
    struct Point {
        double temp;
        double percent;
    };

    /// The form kept in settings and rules: "silent", "balanced" or "max".
    static std::string_view rawValue(Kind kind);

    /// None for any text that is not exactly a raw value.
    static std::optional<Kind> fromRawValue(std::string_view text);

    /// The curve's corners, ascending in temperature.
    static std::span<const Point> points(Kind kind);

    /// Floor the profile asks for at `tempC`. NaN asks for 0: comfort needs a reading, safety does not come
    /// from here.
    static double floorPercent(double tempC, Kind kind);

    /// Temperature at which the profile begins to ask for fan; 0 when it asks at every temperature.
    static double engageTempC(Kind kind);

    /// True when the profile asks for fan at every temperature.
    static bool isAlwaysOn(Kind kind);
};

/// The same rules for any list of corners, ascending in temperature; the list may be empty.
struct CoolingCurve {
    std::span<const CoolingProfile::Point> points;

    [[nodiscard]] double floorPercent(double tempC) const;
    [[nodiscard]] double engageTempC() const;
    [[nodiscard]] bool isAlwaysOn() const;
};

}  // namespace corvane
