#pragma once

#include <string>

#include <fmt/format.h>

namespace corvane {

/// The SMC keys of one fan: "F", its index in decimal, and what they mean.
struct FanKeys {
    explicit FanKeys(int index)
        : current(fmt::format("F{}Ac", index)),
          minimum(fmt::format("F{}Mn", index)),
          maximum(fmt::format("F{}Mx", index)),
          target(fmt::format("F{}Tg", index)),
          modeUpperCase(fmt::format("F{}Md", index)),
          modeLowerCase(fmt::format("F{}md", index)) {}

    std::string current;
    std::string minimum;
    std::string maximum;
    std::string target;
    /// Machines spell the mode key in one of two ways.
    std::string modeUpperCase;
    std::string modeLowerCase;
};

}  // namespace corvane
