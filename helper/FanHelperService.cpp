#include "helper/FanHelperService.h"

#include <algorithm>
#include <cmath>

#include "core/ThermalCurve.h"
#include "helper/DaemonLog.h"
#include "smc/SmcReading.h"
#include "smc/csmc.h"

namespace corvane {

namespace {

using namespace std::chrono_literals;

constexpr Duration watchdogPeriod = 2s;
constexpr Duration longestSilence = 6s;

// A key that reads implausibly when the helper starts is never used; the upper bound is stricter than the one
// for readings at run time.
constexpr float coldestAtStartC = 5.0F;
constexpr float hottestAtStartC = 120.0F;

/// 0...100; NaN asks for nothing.
double clampedPercent(double percent) {
    return std::isnan(percent) ? 0.0 : std::fmax(std::fmin(percent, 100.0), 0.0);
}

/// 0 if unknown; a negative speed is no limit.
int readLimit(const std::string& key) {
    return std::max(0, readRpm(key.c_str()).value_or(0));
}

bool isCpuTempKey(std::string_view key) {
    return key.starts_with("Tp") || key.starts_with("Tc");
}

}  // namespace

FanHelperService::FanHelperService(SerialQueue& queue, SystemSleepSetting& sleepSetting, Log& log)
    : queue_(queue), sleepSetting_(sleepSetting), log_(log), lastContact_(queue.bootTime()) {}

std::shared_ptr<FanHelperService> FanHelperService::create(SerialQueue& queue,
                                                           SystemSleepSetting& sleepSetting, Log& log) {
    std::shared_ptr<FanHelperService> service(new FanHelperService(queue, sleepSetting, log));
    csmc_open();
    service->learnFans();
    service->learnSensors();
    logDaemon(log, ": opened SMC, {} fans, {} CPU keys, {} safety keys, {} GPU keys", service->fanCount_,
              service->cpuTempKeys_.size(), service->safetyTempKeys_.size(), service->gpuTempKeys_.size());
    service->resetToAutomatic();
    service->startWatchdog();
    return service;
}

void FanHelperService::learnFans() {
    fanCount_ = csmc_read_u8("FNum", nullptr);
    for (int fan = 0; fan < fanCount_; ++fan) {
        const FanKeys& keys = fanKeys_.emplace_back(fan);
        minRPMs_.push_back(0);
        maxRPMs_.push_back(0);
        learnUnknownLimits(static_cast<std::size_t>(fan));
        originalMode_.push_back(csmc_read_u8(keys.modeUpperCase.c_str(), nullptr));
    }
}

/// A limit that could not be read is asked for again before the fan is driven: without its minimum a fan
/// would be driven slower than the firmware lets it turn.
void FanHelperService::learnUnknownLimits(std::size_t fan) {
    const FanKeys& keys = fanKeys_[fan];
    if (minRPMs_[fan] == 0) {
        minRPMs_[fan] = readLimit(keys.minimum);
    }
    if (maxRPMs_[fan] == 0) {
        maxRPMs_[fan] = readLimit(keys.maximum);
    }
}

void FanHelperService::learnSensors() {
    cpuTempKeys_ = discoverTempKeys(true);
    safetyTempKeys_ = discoverTempKeys(false);
    for (const std::string& key : safetyTempKeys_) {
        if (key.starts_with("Tg")) {
            gpuTempKeys_.push_back(key);
        }
    }
}

std::vector<std::string> FanHelperService::discoverTempKeys(bool cpuOnly) const {
    std::vector<std::string> found;
    forEachKey([&](const char* key) {
        if (!(cpuOnly ? isCpuTempKey(key) : ThermalCurve::isSafetyTempKey(key)) || !isFltKey(key)) {
            return;
        }
        const std::optional<float> value = readFinite(key);
        if (value && *value > coldestAtStartC && *value < hottestAtStartC) {
            found.emplace_back(key);
        }
    });
    return found;
}

void FanHelperService::resetToAutomatic() {
    csmc_write_u8("Ftst", 0);
    for (std::size_t fan = 0; fan < fanKeys_.size(); ++fan) {
        csmc_write_u8(modeKey(fan), 0);
    }
    logDaemon(log_, ": reset to Apple-auto control on startup (safety)");
}

void FanHelperService::startWatchdog() {
    watchdogTimer_ = queue_.every(watchdogPeriod, watchdogPeriod, [weak = weak_from_this()] {
        if (const auto service = weak.lock()) {
            service->checkContact();
        }
    });
}

bool FanHelperService::isClientSilent() const {
    return queue_.bootTime() - lastContact_ > longestSilence;
}

void FanHelperService::checkContact() {
    if (!isClientSilent()) {
        return;
    }
    if (isBoosted_) {
        logDaemon(log_, ": WATCHDOG — app silent, releasing fans to Apple");
        stopLoopAndRestore();
    }
    dropPendingFloor();
    if (lidStayAwake_) {
        logDaemon(log_, ": WATCHDOG — app silent, clearing lid-stay-awake");
        clearLidStayAwake();
    }
}

/// A floor that came during a suspend is not held yet, and lapses like one that is.
void FanHelperService::dropPendingFloor() {
    if (!isBoosted_) {
        floorPercent_ = 0;
    }
}

void FanHelperService::emergencyRelease() {
    stopLoopAndRestore();
    if (lidStayAwake_) {
        clearLidStayAwake();
    }
}

void FanHelperService::releaseBeforeSuspend() {
    isSuspending_ = true;
    if (isBoosted_) {
        logDaemon(log_, ": system is going to sleep — releasing fans to Apple");
        stopLoopAndRestore();
    }
}

void FanHelperService::resumeAfterSuspend() {
    isSuspending_ = false;
    if (isClientSilent()) {
        dropPendingFloor();
    } else if (floorPercent_ > 0) {
        startLoopIfNeeded();
        applyOnce();
    }
}

void FanHelperService::onQueue(std::function<void(FanHelperService*)> work) {
    queue_.async([weak = weak_from_this(), work = std::move(work)] { work(weak.lock().get()); });
}

void FanHelperService::markContact() {
    lastContact_ = queue_.bootTime();
}

void FanHelperService::pingWithReply(Reply reply) {
    if (!isMarkQueued_.exchange(true)) {
        onQueue([](FanHelperService* service) {
            if (service != nullptr) {
                service->isMarkQueued_ = false;
                service->markContact();
            }
        });
    }
    reply(true, fmt::format("Corvane daemon alive, fans={}", fanCount_));
}

void FanHelperService::getStatusWithReply(StatusReply reply) {
    onQueue([reply = std::move(reply)](FanHelperService* service) {
        if (service == nullptr) {
            reply({});
            return;
        }
        service->markContact();
        reply(service->statusRecord());
    });
}

void FanHelperService::setFanFloorWithPercentWithReply(double percent, Reply reply) {
    onQueue([percent = clampedPercent(percent), reply = std::move(reply)](FanHelperService* service) {
        if (service != nullptr) {
            service->setFloor(percent, reply);
        }
    });
}

void FanHelperService::setFloor(double percent, const Reply& reply) {
    markContact();
    floorPercent_ = percent;
    if (percent <= 0) {
        stopLoopAndRestore();
        reply(true, "boost off");
        return;
    }
    // A forced fan must not sleep with the machine.
    if (!isSuspending_) {
        startLoopIfNeeded();
        applyOnce();
    }
    reply(true, fmt::format("floor set to {}%", static_cast<int>(percent)));
}

void FanHelperService::stopBoostWithReply(Reply reply) {
    onQueue([reply = std::move(reply)](FanHelperService* service) {
        if (service != nullptr) {
            service->markContact();
            service->stopLoopAndRestore();
        }
        reply(true, "boost stopped");
    });
}

void FanHelperService::setLidStayAwakeWithReply(bool on, Reply reply) {
    onQueue([on, reply = std::move(reply)](FanHelperService* service) {
        if (service == nullptr) {
            reply(false, "no service");
            return;
        }
        service->markContact();
        service->setLidStayAwake(on);
        reply(true, on ? "lid-stay-awake on" : "lid-stay-awake off");
    });
}

}  // namespace corvane
