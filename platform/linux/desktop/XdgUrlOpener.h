#pragma once

#include <string>

#include "platform/UrlOpener.h"

namespace corvane {

/// Opens addresses with xdg-open, which knows the user's browser and mail program on every desktop. Needs no
/// event loop.
///
/// It is looked up in $PATH each time and runs on its own: in a session of its own, with the application's
/// environment, and with none of its signals held. It gets the address as its one argument; no shell takes
/// part. Without xdg-open nothing happens.
class XdgUrlOpener final : public UrlOpener {
public:
    void open(const std::string& url) override;
};

}  // namespace corvane
