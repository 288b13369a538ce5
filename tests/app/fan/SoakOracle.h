#pragma once

#include <algorithm>
#include <cstddef>
#include <deque>
#include <optional>
#include <set>
#include <string>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "tests/app/fan/FanMachine.h"

namespace corvane {

/// How long a condition has held without a break, as far as it was looked at.
class Lasting {
public:
    /// Zero when it does not hold, and at the first look that finds it held.
    Duration look(bool holds, Duration now) {
        if (!holds) {
            since_.reset();
            return Duration::zero();
        }
        since_ = since_.value_or(now);
        return now - *since_;
    }
    void restart() { since_.reset(); }

private:
    std::optional<Duration> since_;
};

/// Says of a controller, its helper and its machine what may not be, from what people want, from what passes
/// between the two and from the machine as it really is. Looks once a second. It asks the helper nothing,
/// for every question would count as contact.
class SoakOracle {
public:
    explicit SoakOracle(FanMachine& machine) : machine_(machine) {}

    // What is wanted, by whom it is wanted.
    bool isSwitchedOn = false;
    std::set<std::string> requesters;
    bool wantsLid = false;

    // What is being done to the machine. While a sensor is held or broken it does not tell the truth.
    bool isTransportBroken = false;
    bool isGarbled = false;
    bool areSensorsBroken = false;
    std::optional<double> heldReading;

    /// Something happened between the application and the helper, or another client asked for something:
    /// nobody knows what the helper holds until the application asks for something again, and a release that
    /// was due may begin to be due now.
    void disturb() {
        unwanted_.restart();
        unwantedInSilence_.restart();
        unwantedInContact_.restart();
        isFloorTheApps_ = false;
        isLidTheApps_ = false;
    }

    /// A fan's keys are broken: it may refuse to be handed back, and be driven by nobody. From now on nothing
    /// is said of the fans, until they are mended and the helper has handed them back, or has started anew.
    void breakFans() {
        areFansBroken_ = true;
        areFansInDoubt_ = true;
    }
    void mendFans() { areFansBroken_ = false; }
    [[nodiscard]] bool areFansInDoubt() const { return areFansInDoubt_; }

    /// A record as the helper made it, and whether the application gets another one.
    void takeRecord(const StatusRecord& record, bool isGarbledOnItsWay) {
        lastRecord_ = record;
        wasGarbled_ = isGarbledOnItsWay;
        lastRecordAt_ = machine_.helper.now();
    }

    /// Calls `fail` with what is wrong.
    template <typename Fail>
    void check(const Fail& fail) {
        now_ = machine_.helper.now();
        followRequests();
        followLog();
        followSensors();
        followFans();
        lidTheAppsFor_ = lidTheApps_.look(isLidTheApps_, now_);
        isInContact_ = lastRecord_ && now_ - lastRecordAt_ < 1s;
        checkRelease(fail);
        checkTargets(fail);
        checkCriticalHeat(fail);
        if (isInContact_ && !wasGarbled_ && !areFansInDoubt_) {
            checkPublished(fail);
        }
        checkWishes(fail);
    }

    [[nodiscard]] bool areFansWanted() const { return isSwitchedOn || !requesters.empty(); }

    // How much there was to check, s.
    int forcedSeconds = 0;
    int hotSeconds = 0;
    int comparedSeconds = 0;
    int firmwareSeconds = 0;

    // What the helper logged.
    std::size_t criticalReleases = 0;
    std::size_t blindReleases = 0;
    std::size_t silentReleases = 0;
    std::size_t silentLidReleases = 0;

private:
    /// A helper that is not spoken to for more than 6 s lets go of what nobody wants by itself, which it
    /// looks at every 2 s. A disturbance can begin this time anew, each is told by `disturb`; so does
    /// contact.
    static constexpr Duration releasedWithoutContact = 8s;
    /// An application in contact releases it with the fifth record. One comes every second; the first is in
    /// at the first look, the fifth 4 s later, and one more second is for a look that falls together with a
    /// record.
    static constexpr Duration releasedInContact = 5s;
    /// At worst contact comes back when the silence was all but over.
    static constexpr Duration releasedAnyway = releasedWithoutContact + releasedInContact;
    /// Three of the helper's last five readings, one every 0.8 s, make their median.
    static constexpr Duration medianFollows = 3s;
    /// °C; more than the noise of a sensor.
    static constexpr double readingSlack = 0.5;

    [[nodiscard]] bool flag(std::string_view key) const {
        const bool* value = lastRecord_ ? lastRecord_->get<bool>(key) : nullptr;
        return value != nullptr && *value;
    }

    void followRequests() {
        for (const std::string& request : machine_.takeRequests()) {
            (request.starts_with("lid") ? isLidTheApps_ : isFloorTheApps_) = !isTransportBroken;
        }
    }

    void followLog() {
        RecordingLog& log = machine_.helper.log;
        hasHandedBack_ = log.count("released to Apple-auto (verified") > 0;
        criticalReleases += log.count("CRITICAL");
        blindReleases += log.count("lost all temp readings");
        silentReleases += log.count("WATCHDOG — app silent, releasing");
        const std::size_t lidReleases = log.count("WATCHDOG — app silent, clearing");
        silentLidReleases += lidReleases;
        isLidTheApps_ = isLidTheApps_ && lidReleases == 0;
        log.clear();
    }

    /// A helper that starts while a mode key is gone spells the keys wrong for good, and a mode that cannot
    /// be read counts as handed back: only one that has found all keys is believed.
    void followFans() {
        const bool isNew = fansOfLaunch_ != machine_.host.launchCount();
        if (isNew) {
            fansOfLaunch_ = machine_.host.launchCount();
            knowsAllFans_ = !areFansBroken_;
        }
        const bool isBelieved = knowsAllFans_ && !areFansBroken_;
        areFansInDoubt_ = areFansInDoubt_ && !(isBelieved && (hasHandedBack_ || isNew));
    }

    void followSensors() {
        if (launches_ != machine_.host.launchCount()) {
            launches_ = machine_.host.launchCount();
            knowsAllSensors_ = !areSensorsBroken;
        }
        const double die = machine_.helper.mac.dieTemperature();
        coolest_.push_back(die);
        if (coolest_.size() > 5) {
            coolest_.pop_front();
        }
        const bool canSee = knowsAllSensors_ && !areSensorsBroken && machine_.host.isRunning();
        seesFor_ = seeing_.look(canSee, now_);
        seesTruthFor_ = seeingTruth_.look(canSee && !heldReading && !isTransportBroken, now_);
        // Between two looks a sensor that is held or let go may have shown less.
        if (isHeld_ != heldReading.has_value()) {
            isHeld_ = heldReading.has_value();
            hot_.restart();
        }
        hotFor_ = hot_.look(canSee && heldReading.value_or(die) >= 100 + readingSlack, now_);
    }

    template <typename Fail>
    void checkRelease(const Fail& fail) {
        const bool isForced = machine_.helper.mac.isAnyFanForced() && !areFansInDoubt_;
        forcedSeconds += isForced ? 1 : 0;
        const bool isUnwanted =
            (isForced && !areFansWanted()) || (machine_.helper.sleepSetting.isSleepDisabled() && !wantsLid);
        if (isGarbled) {
            disturb();
        }
        if (unwanted_.look(isUnwanted, now_) > releasedAnyway) {
            fail("forced for too long without anybody's wish");
        }
        if (unwantedInSilence_.look(isUnwanted && !isInContact_, now_) > releasedWithoutContact) {
            fail("the helper hears nothing and does not release what nobody wants");
        }
        if (unwantedInContact_.look(isUnwanted && isInContact_, now_) > releasedInContact) {
            fail("the application sees what nobody wants and does not release it");
        }
    }

    template <typename Fail>
    void checkTargets(const Fail& fail) {
        if (areFansInDoubt_) {
            return;
        }
        SimulatedMac& mac = machine_.helper.mac;
        for (std::size_t fan = 0; fan < mac.model().fans.size(); ++fan) {
            if (!mac.isFanForced(fan)) {
                continue;
            }
            const double target = mac.fanTarget(fan);
            if (target < static_cast<double>(mac.model().fans[fan].minimum)) {
                fail(fmt::format("fan {} is held at {} RPM, below its minimum", fan, target));
            }
            if (seesTruthFor_ < 5s) {
                continue;
            }
            ++firmwareSeconds;
            if (target + 1 < firmwareTarget(mac.model(), fan)) {
                fail(fmt::format("fan {} is held at {} RPM, the firmware would give {}", fan, target,
                                 firmwareTarget(mac.model(), fan)));
            }
        }
    }

    /// What the firmware would surely ask of the fan: at the coolest die of the last seconds, and of a fan
    /// that it may let stand nothing.
    [[nodiscard]] double firmwareTarget(const MacModel& model, std::size_t fan) const {
        const double die = *std::ranges::min_element(coolest_) - readingSlack;
        if (die < model.firmware.startsAt) {
            return 0;
        }
        const FirmwareCurve& curve = model.firmware;
        const double part =
            std::clamp((die - curve.risesFrom) / (curve.fullFrom - curve.risesFrom), 0.0, 1.0);
        const FanLimits& limits = model.fans[fan];
        return static_cast<double>(limits.minimum) +
               part * static_cast<double>(limits.maximum - limits.minimum);
    }

    template <typename Fail>
    void checkCriticalHeat(const Fail& fail) {
        if (areFansInDoubt_ || hotFor_ < medianFollows || seesFor_ < medianFollows) {
            return;
        }
        ++hotSeconds;
        if (machine_.helper.mac.isAnyFanForced()) {
            fail("forced at critical heat");
        }
    }

    template <typename Fail>
    void checkPublished(const Fail& fail) {
        ++comparedSeconds;
        const FanController& fan = *machine_.fan;
        const bool isHeld = flag(StatusKey::isBoosted);
        if (fan.isBoosted() != isHeld) {
            fail(fmt::format("isBoosted is {}, the helper's is {}", fan.isBoosted(), isHeld));
        }
        const double floor = *lastRecord_->get<double>(StatusKey::floorPercent);
        if (isHeld && isFloorTheApps_ && fan.targetPercent() != floor) {
            fail(fmt::format("targetPercent is {}, the helper holds {}", fan.targetPercent(), floor));
        }
        // The answer to a lid request brings no record with it; the next poll does.
        if (lidTheAppsFor_ >= 1s && flag(StatusKey::lidStayAwake) != wantsLid) {
            fail("the helper has not what was asked of it for the lid");
        }
        if (machine_.helper.mac.isAnyFanForced() && !isHeld && !areFansInDoubt_) {
            fail("a fan is forced, and the helper knows nothing of it");
        }
    }

    template <typename Fail>
    void checkWishes(const Fail& fail) {
        const FanController& fan = *machine_.fan;
        if (fan.fansEnabled() != isSwitchedOn) {
            fail("the switch is not where it was put");
        }
        if (fan.intendedLidLock() != wantsLid) {
            fail("the wish for the lid is not what it was");
        }
        if (!areFansWanted() && (fan.targetPercent() != 0 || fan.autoEngaged() || fan.boostExpiresAt())) {
            fail("something is asked for that nobody wants");
        }
    }

    FanMachine& machine_;
    Duration now_{};
    std::optional<StatusRecord> lastRecord_;
    Duration lastRecordAt_{};
    bool wasGarbled_ = false;
    bool isInContact_ = false;
    /// The last floor, or lid setting, that the helper was asked for came from the application.
    bool isFloorTheApps_ = false;
    bool isLidTheApps_ = false;
    int launches_ = 0;
    int fansOfLaunch_ = 0;
    bool areFansBroken_ = false;
    bool areFansInDoubt_ = false;
    /// The helper was started while no fan was broken.
    bool knowsAllFans_ = false;
    /// Within the last second.
    bool hasHandedBack_ = false;
    /// The helper was started while all sensors could be read.
    bool knowsAllSensors_ = false;
    /// °C, of the last looks.
    std::deque<double> coolest_;
    Duration seesFor_{};
    Duration seesTruthFor_{};
    Duration hotFor_{};
    Duration lidTheAppsFor_{};
    Lasting lidTheApps_;
    Lasting unwanted_;
    Lasting unwantedInSilence_;
    Lasting unwantedInContact_;
    Lasting seeing_;
    Lasting seeingTruth_;
    Lasting hot_;
    /// A sensor was held at the last look.
    bool isHeld_ = false;
};

}  // namespace corvane
