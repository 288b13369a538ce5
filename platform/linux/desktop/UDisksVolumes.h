#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/Lifetime.h"
#include "platform/SerialQueue.h"
#include "platform/Volumes.h"
#include "platform/linux/desktop/BackgroundWorkers.h"
#include "platform/linux/desktop/BusThread.h"
#include "platform/linux/desktop/DirectoryListing.h"
#include "platform/linux/desktop/MainLoopExit.h"
#include "platform/linux/desktop/UDisksClient.h"

namespace corvane {

/// The volumes as UDisks tells of them; as the kernel's table of mounts does while UDisks is absent, not read
/// yet, hung or talking nonsense. Main loop.
///
/// UDisks is followed on the bus thread, and asking here only copies what is known of it. A drive is touched
/// on a thread that may be stuck for ever, once at a time: further touches join the one under way. Beyond
/// `maxTouches` under way or waiting, and when the system has no thread to spare, a touch is over at once.
class UDisksVolumes final : public Volumes {
public:
    static constexpr std::size_t maxTouches = BackgroundWorkers::maxWaiting;

    /// What a touch does, on any thread, for as long as it takes.
    using List = std::function<void(const std::string& path)>;

    /// `bus`, the system's, and `mainLoop` outlive the volumes. `mountTable` is a file like
    /// /proc/self/mountinfo.
    UDisksVolumes(BusThread& bus, SerialQueue& mainLoop, std::string mountTable = "/proc/self/mountinfo",
                  List list = listDirectory, UDisksPatience patience = {});
    ~UDisksVolumes() override;

    [[nodiscard]] std::vector<Volume> mounted() const override;
    [[nodiscard]] bool isMounted(const std::string& path) const override;
    void touch(const std::string& path, std::function<void()> done) override;

private:
    class Known;
    using Touches = std::multimap<std::string, std::function<void()>>;

    [[nodiscard]] bool begin(const std::string& path);
    void finish(const std::string& path);

    BusThread& bus_;
    std::string mountTable_;
    std::shared_ptr<const List> list_;
    std::shared_ptr<Known> known_;
    /// Belongs to the bus thread.
    std::shared_ptr<UDisksClient> client_;
    /// What runs after the touches under way, by path.
    Touches touches_;
    std::shared_ptr<MainLoopExit> exit_;
    BackgroundWorkers workers_;
    Lifetime lifetime_;
};

}  // namespace corvane
