#pragma once

#include "platform/UrlOpener.h"

namespace corvane {

/// Opens addresses with what the user's workspace has for them. Main loop.
class MacUrlOpener final : public UrlOpener {
public:
    void open(const std::string& url) override;
};

}  // namespace corvane
