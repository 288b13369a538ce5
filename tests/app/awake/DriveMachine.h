#pragma once

#include <QList>
#include <chrono>
#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "app/awake/DriveManager.h"
#include "platform/simulated/MemoryUserDefaults.h"
#include "platform/simulated/SimulatedLocale.h"
#include "platform/simulated/SimulatedVolumes.h"
#include "platform/simulated/VirtualTime.h"
#include "tests/support/StoredBytes.h"

namespace corvane {

using namespace std::chrono_literals;

inline std::ostream& operator<<(std::ostream& out, const DriveItem& drive) {
    return out << drive.path.toStdString() << " (" << drive.name.toStdString() << ")";
}

// Two drives.
inline const DriveItem backup{.path = "/media/me/Backup", .name = "Backup"};
inline const DriveItem films{.path = "/media/me/Films", .name = "Films"};

/// A drive manager on virtual time. Set up what it shall find, then `open` it.
class DriveMachine {
public:
    void open() {
        manager.emplace(DriveManagerServices{mainLoop, volumes, defaults, locale});
        time.settle();
    }

    /// Volumes of which nothing but the path is known; others are mounted no more.
    void mount(const std::vector<std::string>& paths) {
        std::vector<Volume> mounted;
        for (const std::string& path : paths) {
            mounted.emplace_back().path = path;
        }
        volumes.setMounted(std::move(mounted));
    }

    /// Switched on, with drives that are mounted.
    void openWith(const std::vector<DriveItem>& drives) {
        std::vector<std::string> paths;
        QList<DriveItem> chosen;
        for (const DriveItem& drive : drives) {
            paths.push_back(drive.path.toStdString());
            chosen.append(drive);
        }
        mount(paths);
        defaults.set(DriveManager::enabledSetting, true);
        defaults.set(DriveManager::drivesSetting, *DriveList::encode(chosen));
        open();
    }

    /// The paths that were touched since this was last called, in order.
    [[nodiscard]] std::vector<std::string> takeTouched() {
        const std::vector<std::string>& all = volumes.touched();
        std::vector<std::string> fresh(all.begin() + std::exchange(taken_, std::ssize(all)), all.end());
        return fresh;
    }
    /// How many touches began while `duration` passed.
    std::size_t touchesIn(Duration duration) {
        static_cast<void>(takeTouched());
        time.advance(duration);
        return takeTouched().size();
    }
    [[nodiscard]] std::optional<std::string> storedDrives() const {
        return storedText(defaults, DriveManager::drivesSetting);
    }

    VirtualTime time;
    VirtualQueue mainLoop{time};
    SimulatedVolumes volumes{mainLoop};
    MemoryUserDefaults defaults;
    SimulatedLocale locale;
    std::optional<DriveManager> manager;

private:
    std::ptrdiff_t taken_ = 0;
};

}  // namespace corvane
