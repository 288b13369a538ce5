#pragma once

#include <filesystem>
#include <string>
#include <variant>

namespace corvane {

/// The application's code, which the executable loads only to run as the application: no other role ever maps
/// a user-interface toolkit.
class ApplicationModule {
public:
    /// What the module defines, with C linkage: takes the process's arguments and returns its exit status. It
    /// may be called once.
    using Main = int (*)(int argc, char** argv);
    static constexpr const char* mainSymbol = "corvaneApplicationMain";
    static constexpr const char* fileName = "libcorvane-app.so";

    /// Looks for the module where builds and installations put it, as seen from the running executable:
    /// beside it, or in the library folder of the same prefix. Returns the module's entry, or why there is
    /// none, one line. The module stays loaded until the process ends.
    static std::variant<Main, std::string> load(const std::filesystem::path& executable);
};

}  // namespace corvane
