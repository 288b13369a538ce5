#pragma once

namespace corvane {

/// What was chosen when this was built; constants, UTF-8.
struct BuildInfo {
    /// The project's version.
    static const char* const version;
    /// Counts builds: differs between any two that are shipped.
    static const char* const buildNumber;
    /// The update feed, an https address; empty for none.
    static const char* const updateFeed;
    /// The product's home page, an https address; empty for none.
    static const char* const homePage;
    /// Where users write to, a mail address; empty for none.
    static const char* const supportMail;
};

}  // namespace corvane
