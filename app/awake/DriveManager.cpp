#include "app/awake/DriveManager.h"

#include <QCollator>
#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

#include "app/shell/Collator.h"

namespace corvane {

namespace {

bool isChoosable(const Volume& volume) {
    // A path that is no text could be neither kept nor found again.
    const bool isText = QString::fromStdString(volume.path).toStdString() == volume.path;
    return volume.isBrowsable.value_or(false) && !volume.isInternal.value_or(true) && volume.path != "/" &&
           isText;
}

DriveItem itemOf(const Volume& volume) {
    DriveItem item{.path = QString::fromStdString(volume.path),
                   .name = QString::fromStdString(volume.name.value_or(""))};
    if (item.name.isEmpty()) {
        item.name = item.path.section('/', -1, -1, QString::SectionSkipEmpty);
    }
    return item;
}

int storedInterval(const UserDefaults& defaults) {
    const auto seconds = defaults.get<std::int64_t>(DriveManager::intervalSetting)
                             .value_or(DriveManager::defaultIntervalSeconds);
    return static_cast<int>(std::clamp<std::int64_t>(seconds, DriveManager::shortestStoredIntervalSeconds,
                                                     std::numeric_limits<int>::max()));
}

}  // namespace

DriveManager::DriveManager(const DriveManagerServices& services)
    : mainLoop_(services.mainLoop),
      volumes_(services.volumes),
      defaults_(services.defaults),
      locale_(services.locale) {
    enabled_ = defaults_.get<bool>(enabledSetting).value_or(false);
    intervalSeconds_ = storedInterval(defaults_);
    drives_ = DriveList::decode(defaults_.get<StoredList::Data>(drivesSetting).value_or(StoredList::Data()));
    reschedule();
}

DriveManager::~DriveManager() = default;

void DriveManager::setEnabled(bool on) {
    defaults_.set(enabledSetting, on);
    enabled_ = on;
    reschedule();
}

void DriveManager::setIntervalSeconds(int seconds) {
    defaults_.set(intervalSetting, std::int64_t{seconds});
    intervalSeconds_ = seconds;
    reschedule();
}

void DriveManager::add(const DriveItem& drive) {
    QList<DriveItem> drives = drives_;
    const bool isChosen = std::any_of(drives.cbegin(), drives.cend(),
                                      [&](const DriveItem& chosen) { return chosen.path == drive.path; });
    if (!isChosen) {
        drives.append(drive);
        changeDrives(std::move(drives));
    }
}

void DriveManager::remove(const DriveItem& drive) {
    QList<DriveItem> drives = drives_;
    drives.removeIf([&](const DriveItem& chosen) { return chosen.path == drive.path; });
    changeDrives(std::move(drives));
}

QList<DriveItem> DriveManager::availableDrives() const {
    QList<DriveItem> items;
    for (const Volume& volume : volumes_.mounted()) {
        if (isChoosable(volume)) {
            items.append(itemOf(volume));
        }
    }
    const QCollator collator = userCollator(locale_);
    std::stable_sort(items.begin(), items.end(), [&](const DriveItem& left, const DriveItem& right) {
        return collator.compare(left.name, right.name) < 0;
    });
    return items;
}

void DriveManager::changeDrives(QList<DriveItem> drives) {
    drives_ = std::move(drives);
    if (auto data = DriveList::encode(drives_)) {
        defaults_.set(drivesSetting, *std::move(data));
    }
    reschedule();
}

void DriveManager::reschedule() {
    timer_.reset();
    if (!active()) {
        return;
    }
    const std::chrono::seconds interval(std::max(intervalSeconds(), 1));
    timer_ = mainLoop_.every(interval, interval, [this] { poke(); });
    poke();
}

void DriveManager::poke() {
    for (const DriveItem& drive : drives()) {
        const std::string path = drive.path.toStdString();
        if (volumes_.isMounted(path)) {
            touch(path);
        } else {
            // What is mounted there next does not wait for an answer that this one still owes.
            touching_.erase(path);
        }
    }
}

void DriveManager::touch(const std::string& path) {
    const std::uint64_t touch = ++touches_;
    if (touching_.try_emplace(path, touch).second) {
        volumes_.touch(path, lifetime_.bound([this, path, touch] { touched(path, touch); }));
    }
}

void DriveManager::touched(const std::string& path, std::uint64_t touch) {
    if (const auto place = touching_.find(path); place != touching_.end() && place->second == touch) {
        touching_.erase(place);
    }
}

}  // namespace corvane
