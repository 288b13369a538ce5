#pragma once

#include "platform/FileSystem.h"

namespace corvane {

/// The machine's own files. A text is written to a file beside its target, which then takes the target's
/// name.
class PosixFileSystem final : public FileSystem {
public:
    [[nodiscard]] bool isFile(const std::filesystem::path& path) const override;
    [[nodiscard]] std::optional<std::string> writeAtomically(const std::filesystem::path& path,
                                                             std::string_view text) override;
    void remove(const std::filesystem::path& path) override;
    void removeTree(const std::filesystem::path& path) override;
    [[nodiscard]] bool differ(const std::filesystem::path& one,
                              const std::filesystem::path& other) const override;
};

}  // namespace corvane
