#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/DirectoryTouches.h"
#include "platform/SerialQueue.h"
#include "platform/Volumes.h"
#include "platform/linux/desktop/BackgroundWorkers.h"
#include "platform/linux/desktop/BusThread.h"
#include "platform/linux/desktop/DirectoryListing.h"
#include "platform/linux/desktop/UDisksClient.h"

namespace corvane {

/// The volumes as UDisks tells of them; as the kernel's table of mounts does while UDisks is absent, not read
/// yet, hung or talking nonsense. Main loop.
///
/// UDisks is followed on the bus thread, and asking here only copies what is known of it. A drive is touched
/// on a thread that may be stuck for ever.
class UDisksVolumes final : public Volumes {
public:
    /// `bus`, the system's, and `mainLoop` outlive the volumes. `mountTable` is a file like
    /// /proc/self/mountinfo.
    UDisksVolumes(BusThread& bus, SerialQueue& mainLoop, std::string mountTable = "/proc/self/mountinfo",
                  DirectoryTouches::List list = listDirectory, UDisksPatience patience = {});
    ~UDisksVolumes() override;

    [[nodiscard]] std::vector<Volume> mounted() const override;
    [[nodiscard]] bool isMounted(const std::string& path) const override;
    void touch(const std::string& path, std::function<void()> done) override;

private:
    class Known;

    BusThread& bus_;
    std::string mountTable_;
    std::shared_ptr<Known> known_;
    /// Belongs to the bus thread.
    std::shared_ptr<UDisksClient> client_;
    BackgroundWorkers workers_;
    DirectoryTouches touches_;
};

}  // namespace corvane
