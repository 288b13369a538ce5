#include "platform/linux/LogindObserver.h"

#include <chrono>
#include <utility>

#include <sdbus-c++/sdbus-c++.h>

#include "platform/linux/LogindLock.h"

namespace corvane {

LogindObserver::LogindObserver(asio::io_context& context, Log& log, std::function<void()> onRestart)
    : context_(context), log_(log), onRestart_(std::move(onRestart)) {}

void LogindObserver::observe(std::function<void()> beforeSuspend, std::function<void()> afterResume) {
    beforeSuspend_ = std::move(beforeSuspend);
    afterResume_ = std::move(afterResume);
    try {
        connection_ = sdbus::createSystemBusConnection();
        subscribe();
    } catch (const sdbus::Error& error) {
        log_.write("Corvane daemon: no login manager, suspends will not be noticed: " + error.getMessage());
        connection_.reset();
        return;
    }
    if (isPreparingForSleep()) {
        // It gives out no lock for that suspend any more.
        beforeSuspend_();
    } else {
        takeDelayLock();
    }
    pump_ = std::make_unique<BusPump>(context_, *connection_, [this](const std::string& reason) {
        log_.write("Corvane daemon: lost the login manager: " + reason);
    });
    pump_->process();
}

void LogindObserver::subscribe() {
    manager_ = sdbus::createProxy(*connection_, Logind::busName, Logind::objectPath);
    signals_.emplace(
        *connection_, [this](bool isGoingDown) { prepareForSleep(isGoingDown); },
        [this] {
            // A login manager that came up anew does not finish the suspend that the old one announced.
            prepareForSleep(false);
            onRestart_();
        });
}

/// False when the login manager does not tell within a second: whoever starts with this waits for it.
bool LogindObserver::isPreparingForSleep() {
    try {
        sdbus::Variant isGoingDown;
        manager_->callMethod("Get")
            .onInterface("org.freedesktop.DBus.Properties")
            .withTimeout(std::chrono::seconds(1))
            .withArguments(Logind::interface, "PreparingForSleep")
            .storeResultsTo(isGoingDown);
        return isGoingDown.containsValueOfType<bool>() && isGoingDown.get<bool>();
    } catch (const sdbus::Error&) {
        return false;
    }
}

void LogindObserver::takeDelayLock() {
    try {
        delayLock_ = Logind::takeLock(*manager_, "sleep", "Fans are handed back before sleep", "delay");
    } catch (const sdbus::Error& error) {
        log_.write("Corvane daemon: suspends cannot be delayed: " + error.getMessage());
    }
}

void LogindObserver::prepareForSleep(bool isGoingDown) {
    if (!isGoingDown) {
        takeDelayLock();
        afterResume_();
        return;
    }
    beforeSuspend_();
    delayLock_.reset();
}

}  // namespace corvane
