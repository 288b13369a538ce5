#pragma once

@class NSNumber;

namespace corvane {

/// What a number of Foundation was made of: property lists and messages tell a Boolean from an integer, and
/// an integer from a real.
enum class NumberKind {
    boolean,
    /// One that `longLongValue` gives back as it is.
    integer,
    real,
    /// An integer beyond that.
    unsignedBeyondInteger,
};

NumberKind kindOf(NSNumber* number);

}  // namespace corvane
