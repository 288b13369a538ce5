#pragma once

#include <QList>
#include <QObject>
#include <QProperty>
#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "app/awake/DriveItem.h"
#include "platform/Lifetime.h"
#include "platform/Locale.h"
#include "platform/SerialQueue.h"
#include "platform/UserDefaults.h"
#include "platform/Volumes.h"

namespace corvane {

/// What the drive manager needs. All of it outlives the manager.
struct DriveManagerServices {
    SerialQueue& mainLoop;
    Volumes& volumes;
    UserDefaults& defaults;
    const Locale& locale;
};

/// Keeps chosen drives from spinning down: while it is switched on, each of them is touched, that is read
/// from, at an interval. Nothing is written to a drive, though its file system may note the access, and no
/// outcome is shown; a drive that is not mounted is passed over until it is.
///
/// Each setter stores its value, an equal one too, and begins the interval anew with a touch at once. Belongs
/// to the main loop.
class DriveManager final : public QObject {
    Q_OBJECT

    Q_PROPERTY(bool enabled READ enabled WRITE setEnabled NOTIFY enabledChanged)
    Q_PROPERTY(QList<corvane::DriveItem> drives READ drives NOTIFY drivesChanged)
    Q_PROPERTY(
        int intervalSeconds READ intervalSeconds WRITE setIntervalSeconds NOTIFY intervalSecondsChanged)

public:
    // The settings: a Boolean, an integer, and a stored list.
    static constexpr const char* enabledSetting = "drivealive.enabled";
    static constexpr const char* intervalSetting = "drivealive.interval";
    static constexpr const char* drivesSetting = "drivealive.drives";

    static constexpr int defaultIntervalSeconds = 60;
    /// What a stored interval is raised to.
    static constexpr int shortestStoredIntervalSeconds = 15;

    /// Goes on where the last run stopped: touches at once when it is switched on.
    explicit DriveManager(const DriveManagerServices& services);
    ~DriveManager() override;

    /// The user's switch.
    [[nodiscard]] bool enabled() const { return enabled_; }
    /// The chosen drives, in the order they were added.
    [[nodiscard]] QList<DriveItem> drives() const { return drives_; }
    /// Between touches. As it was set; below one, drives are touched every second.
    [[nodiscard]] int intervalSeconds() const { return intervalSeconds_; }
    /// Drives are being touched: switched on, and some are chosen.
    [[nodiscard]] bool active() const { return enabled() && !drives().isEmpty(); }

    void setEnabled(bool on);
    void setIntervalSeconds(int seconds);

    /// Passed over when a drive of this path is chosen already.
    Q_INVOKABLE void add(const corvane::DriveItem& drive);
    /// Removes what has this path.
    Q_INVOKABLE void remove(const corvane::DriveItem& drive);

    /// The external volumes there are now, by name in the order of the user's language.
    [[nodiscard]] QList<DriveItem> availableDrives() const;

Q_SIGNALS:
    void enabledChanged();
    void drivesChanged();
    void intervalSecondsChanged();

private:
    void changeDrives(QList<DriveItem> drives);
    void reschedule();
    void poke();
    void touch(const std::string& path);
    void touched(const std::string& path, std::uint64_t touch);

    SerialQueue& mainLoop_;
    Volumes& volumes_;
    UserDefaults& defaults_;
    const Locale& locale_;

    // Published. Assigning a different value announces it.
    Q_OBJECT_BINDABLE_PROPERTY(DriveManager, bool, enabled_, &DriveManager::enabledChanged)
    Q_OBJECT_BINDABLE_PROPERTY(DriveManager, QList<DriveItem>, drives_, &DriveManager::drivesChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(DriveManager, int, intervalSeconds_, defaultIntervalSeconds,
                                         &DriveManager::intervalSecondsChanged)

    /// The touches that have not been answered, by path. A drive that hangs for hours is asked once, not once
    /// a round, until it is seen to be gone.
    std::map<std::string, std::uint64_t> touching_;
    /// How many there have been.
    std::uint64_t touches_ = 0;
    std::unique_ptr<Timer> timer_;
    Lifetime lifetime_;
};

}  // namespace corvane
