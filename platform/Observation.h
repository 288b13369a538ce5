#pragma once

namespace corvane {

/// An observation that is under way; destroying it ends it.
class Observation {
public:
    Observation() = default;
    Observation(const Observation&) = delete;
    Observation& operator=(const Observation&) = delete;
    virtual ~Observation() = default;
};

}  // namespace corvane
