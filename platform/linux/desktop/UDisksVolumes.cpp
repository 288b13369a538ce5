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

UDisksVolumes::UDisksVolumes(BusThread& bus, SerialQueue& mainLoop, std::string mountTable, List list,
                             UDisksPatience patience)
    : bus_(bus),
      mountTable_(std::move(mountTable)),
      list_(std::make_shared<const List>(std::move(list))),
      known_(std::make_shared<Known>()),
      client_(std::make_shared<UDisksClient>(bus.context(), patience,
                                             [known = known_](std::optional<UDisksClient::Volumes> volumes) {
                                                 known->set(std::move(volumes));
                                             })),
      exit_(std::make_shared<MainLoopExit>(mainLoop)) {
    bus_.post([client = client_] { client->start(); });
}

UDisksVolumes::~UDisksVolumes() {
    exit_->close();
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
    if (touches_.size() < maxTouches && (touches_.contains(path) || begin(path))) {
        touches_.emplace(path, std::move(done));
    } else {
        exit_->toMainLoop(lifetime_.bound(std::move(done)));
    }
}

bool UDisksVolumes::begin(const std::string& path) {
    return workers_.post(
        [path, list = list_, exit = exit_, finished = lifetime_.bound([this, path] { finish(path); })] {
            (*list)(path);
            exit->toMainLoop(finished);
        });
}

void UDisksVolumes::finish(const std::string& path) {
    // What runs now may touch again, which is another touch then, or end the volumes.
    Touches ended;
    while (touches_.contains(path)) {
        ended.insert(touches_.extract(touches_.find(path)));
    }
    for (const auto& [touched, done] : ended) {
        done();
    }
}

}  // namespace corvane
