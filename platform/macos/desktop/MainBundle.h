#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace corvane {

/// The bundle that the running program belongs to. Any thread.
struct MainBundle {
    /// None when the program runs outside of an application's bundle.
    static std::optional<std::string> identifier();

    /// The folder of the program when it runs outside of one.
    static std::filesystem::path path();

    /// A file that the bundle brings along; none when it does not.
    static std::optional<std::filesystem::path> resource(const std::string& name);
};

}  // namespace corvane
