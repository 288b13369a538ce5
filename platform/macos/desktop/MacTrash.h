#pragma once

#include "platform/Trash.h"

namespace corvane {

/// The Trash of the Finder. Main loop.
class MacTrash final : public Trash {
public:
    void moveThere(const std::filesystem::path& path) override;
};

}  // namespace corvane
