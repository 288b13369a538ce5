#pragma once

#include <cstdint>
#include <random>
#include <string>

#include <systemd/sd-bus.h>

namespace corvane {

/// What a caller without any good intention puts into messages. The same seed gives the same contents.
class RandomContents {
public:
    explicit RandomContents(std::uint64_t seed) : random_(seed) {}

    [[nodiscard]] std::uint64_t pick(std::uint64_t count) { return random_() % count; }
    [[nodiscard]] bool oneIn(std::uint64_t count) { return pick(count) == 0; }

    /// A valid name of a member: mostly one of the helper's own.
    [[nodiscard]] std::string member();
    [[nodiscard]] std::string interface();
    [[nodiscard]] std::string path();

    /// Appends some values of any types, nested up to `depth` times; up to a few MiB now and then.
    void fill(sd_bus_message* message, int depth = 3);

private:
    void append(sd_bus_message* message, int depth);
    void appendBasic(sd_bus_message* message, char type);
    void appendArray(sd_bus_message* message);
    void appendVariant(sd_bus_message* message, int depth);
    void appendStruct(sd_bus_message* message);
    [[nodiscard]] double anyDouble();
    [[nodiscard]] std::string anyText();
    [[nodiscard]] std::string letters(std::size_t count);

    std::mt19937_64 random_;
};

}  // namespace corvane
