#pragma once

#include <string>

namespace corvane {

/// Shows web pages in the user's own browser, and begins messages in their mail program. Belongs to the main
/// loop and does not block it.
class UrlOpener {
public:
    UrlOpener() = default;
    UrlOpener(const UrlOpener&) = delete;
    UrlOpener& operator=(const UrlOpener&) = delete;
    virtual ~UrlOpener() = default;

    /// Opens an https address, or a mailto address of one recipient with nothing but a subject. What cannot
    /// be opened is passed over, and so is every other kind of address.
    virtual void open(const std::string& url) = 0;
};

}  // namespace corvane
