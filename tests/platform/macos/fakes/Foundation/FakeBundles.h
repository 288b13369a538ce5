#pragma once

#include <map>
#include <optional>
#include <string>

#include "tests/platform/macos/fakes/Current.h"

namespace corvane {

/// The bundles of a Mac's disk by what their Info.plist says; their files are the disk's own. Without one the
/// program runs outside of a bundle. One at a time; any thread, once it is made.
class FakeBundles {
public:
    struct Info {
        std::optional<std::string> identifier = std::nullopt;
        std::optional<std::string> iconFile = std::nullopt;
        /// False: it is a number.
        bool isIconFileText = true;
        std::optional<std::string> displayName = std::nullopt;
        std::optional<std::string> name = std::nullopt;
        /// False: the display name is a number.
        bool isDisplayNameText = true;
    };

    /// `mainPath` is where the program runs; with an identifier it is the application's bundle.
    explicit FakeBundles(std::optional<std::string> mainIdentifier = "de.tavrin.corvane",
                         std::string mainPath = "/Applications/Corvane.app");

    void add(const std::string& path, const Info& info) { bundles_[path] = info; }

    // For the framework's class.
    [[nodiscard]] const std::string& mainPath() const { return mainPath_; }
    /// Null where there is no bundle.
    [[nodiscard]] const Info* find(const std::string& path) const;

private:
    std::string mainPath_;
    std::map<std::string, Info> bundles_;
    Current<FakeBundles> current_{*this};
};

}  // namespace corvane
