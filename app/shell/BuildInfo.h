#pragma once

#include <string_view>

namespace corvane {

/// What was chosen when this was built; constants.
struct BuildInfo {
    /// The project's version.
    static const std::string_view version;
    /// The update feed, an https address; empty for none.
    static const std::string_view updateFeed;
    /// The product's home page, an https address; empty for none.
    static const std::string_view homePage;
};

}  // namespace corvane
