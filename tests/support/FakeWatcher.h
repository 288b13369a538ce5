#pragma once

#include <atomic>
#include <memory>
#include <string>

#include <sdbus-c++/sdbus-c++.h>

#include "platform/linux/HelperBus.h"
#include "tests/support/Notes.h"

namespace corvane {

/// Who watches over status notifier items on a bus, on a thread of its own.
class FakeWatcher {
public:
    /// How it answers those who register: with an error as often as it refuses at first.
    explicit FakeWatcher(const std::string& bus, bool hasHost = true, int refusals = 0)
        : hasHost_(hasHost), refusals_(refusals), connection_(HelperBus{bus}.connect()) {
        object_ = sdbus::createObject(*connection_, "/StatusNotifierWatcher");
        object_->registerMethod("RegisterStatusNotifierItem")
            .onInterface(name)
            .implementedAs([this](const std::string& item) { take(item); });
        object_->registerProperty("IsStatusNotifierHostRegistered").onInterface(name).withGetter([this] {
            hostQueries_.add(1);
            return hasHost_.load();
        });
        object_->registerSignal("StatusNotifierHostRegistered").onInterface(name);
        object_->registerSignal("StatusNotifierHostUnregistered").onInterface(name);
        object_->finishRegistration();
        connection_->requestName(name);
        connection_->enterEventLoopAsync();
    }
    FakeWatcher(const FakeWatcher&) = delete;
    FakeWatcher& operator=(const FakeWatcher&) = delete;
    ~FakeWatcher() { connection_->leaveEventLoop(); }

    /// What was registered, refused or not.
    [[nodiscard]] const Notes<std::string>& items() const { return items_; }

    /// How often it was asked for its host, one note each.
    [[nodiscard]] const Notes<int>& hostQueries() const { return hostQueries_; }

    /// The host that shows the items comes or goes, which is told.
    void setHost(bool hasHost) {
        hasHost_ = hasHost;
        object_->emitSignal(hasHost ? "StatusNotifierHostRegistered" : "StatusNotifierHostUnregistered")
            .onInterface(name);
    }

private:
    static constexpr const char* name = "org.kde.StatusNotifierWatcher";

    void take(const std::string& item) {
        items_.add(item);
        if (refusals_ > 0) {
            --refusals_;
            throw sdbus::Error("org.example.Error", "not today");
        }
    }

    std::atomic<bool> hasHost_;
    std::atomic<int> refusals_;
    Notes<std::string> items_;
    Notes<int> hostQueries_;
    std::unique_ptr<sdbus::IConnection> connection_;
    std::unique_ptr<sdbus::IObject> object_;
};

}  // namespace corvane
