#pragma once

#include "platform/DirectoryTouches.h"
#include "platform/SerialQueue.h"
#include "platform/Volumes.h"

namespace corvane {

/// The volumes as the system's file manager tells of them. Main loop.
class MacVolumes final : public Volumes {
public:
    /// `mainLoop` outlives the volumes.
    explicit MacVolumes(SerialQueue& mainLoop);

    [[nodiscard]] std::vector<Volume> mounted() const override;
    [[nodiscard]] bool isMounted(const std::string& path) const override;
    void touch(const std::string& path, std::function<void()> done) override;

private:
    DirectoryTouches touches_;
};

}  // namespace corvane
