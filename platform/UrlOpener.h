#pragma once

#include <string>

namespace corvane {

/// Shows web pages in the user's own browser. Belongs to the main loop and does not block it.
class UrlOpener {
public:
    UrlOpener() = default;
    UrlOpener(const UrlOpener&) = delete;
    UrlOpener& operator=(const UrlOpener&) = delete;
    virtual ~UrlOpener() = default;

    /// Opens an https address. What cannot be opened is passed over.
    virtual void open(const std::string& url) = 0;
};

}  // namespace corvane
