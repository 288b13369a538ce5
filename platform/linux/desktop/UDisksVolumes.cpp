#include "platform/linux/desktop/UDisksVolumes.h"

#include <mutex>
#include <optional>
#include <utility>

#include "platform/linux/desktop/MountTable.h"

namespace corvane {

/// What UDisks said last. Any thread.
class UDisksVolumes::Known {
public:
    void set(std::optional<UDisksClient::Volumes> volumes) {
        const std::lock_guard lock(mutex_);
        volumes_ = std::move(volumes);
    }

    [[nodiscard]] std::optional<UDisksClient::Volumes> get() const {
        const std::lock_guard lock(mutex_);
        return volumes_;
    }

private:
    mutable std::mutex mutex_;
    std::optional<UDisksClient::Volumes> volumes_;
};

UDisksVolumes::UDisksVolumes(BusThread& bus, SerialQueue& mainLoop, std::string mountTable,
                             DirectoryTouches::List list, UDisksPatience patience)
    : bus_(bus),
      mountTable_(std::move(mountTable)),
      known_(std::make_shared<Known>()),
      client_(std::make_shared<UDisksClient>(bus.context(), patience,
                                             [known = known_](std::optional<UDisksClient::Volumes> volumes) {
                                                 known->set(std::move(volumes));
                                             })),
      touches_(
          mainLoop, [this](std::function<void()> work) { return workers_.post(std::move(work)); },
          std::move(list)) {
    bus_.post([client = client_] { client->start(); });
}

UDisksVolumes::~UDisksVolumes() {
    bus_.post([client = std::move(client_)] {});
}

std::vector<Volume> UDisksVolumes::mounted() const {
    if (auto known = known_->get()) {
        return *std::move(known);
    }
    return volumesInTable(readMountTable(mountTable_));
}

bool UDisksVolumes::isMounted(const std::string& path) const {
    return isMountPoint(readMountTable(mountTable_), path);
}

void UDisksVolumes::touch(const std::string& path, std::function<void()> done) {
    touches_.begin(path, std::move(done));
}

}  // namespace corvane
