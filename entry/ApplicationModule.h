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

    /// Where the module is: beside the executable in builds, and somewhere of the same prefix in what is
    /// installed.
    struct Layout {
        const char* fileName;
        /// From the folder above the executable's.
        const char* installedFolder;
    };
    static constexpr Layout linuxLayout{"libcorvane-app.so", "lib/corvane"};
    /// In an application's bundle, whose executable is in Contents/MacOS.
    static constexpr Layout macLayout{"libcorvane-app.dylib", "Frameworks"};
    /// This system's.
    static const Layout layout;

    /// Looks for the module as seen from the running executable. Returns the module's entry, or why there is
    /// none, one line. The module stays loaded until the process ends.
    static std::variant<Main, std::string> load(const std::filesystem::path& executable,
                                                const Layout& layout = ApplicationModule::layout);
};

}  // namespace corvane
