#pragma once

#include <cctype>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <sdbus-c++/sdbus-c++.h>

#include "platform/linux/HelperBus.h"
#include "tests/support/Notes.h"

namespace corvane {

/// A user's service manager on a bus, with the units it is given, all of which it lists whatever it is asked
/// for. It tells of changes only to those who have asked for that, and answers on a thread of its own.
class FakeUserManager {
public:
    using Unit = sdbus::Struct<std::string, std::string, std::string, std::string, std::string, std::string,
                               sdbus::ObjectPath, std::uint32_t, std::string, sdbus::ObjectPath>;
    using Units = std::vector<Unit>;

    explicit FakeUserManager(const std::string& bus) : connection_(HelperBus{bus}.connect()) {
        manager_ = sdbus::createObject(*connection_, "/org/freedesktop/systemd1");
        manager_->registerMethod("Subscribe").onInterface(interface).implementedAs([this] {
            const std::lock_guard lock(mutex_);
            isSubscribed_ = true;
        });
        manager_->registerMethod("ListUnitsByPatterns")
            .onInterface(interface)
            .implementedAs(
                [this](sdbus::Result<Units>&& result, const std::vector<std::string>& /*states*/,
                       const std::vector<std::string>& patterns) { list(std::move(result), patterns); });
        for (const char* signal : {"UnitNew", "UnitRemoved"}) {
            manager_->registerSignal(signal)
                .onInterface(interface)
                .withParameters<std::string, sdbus::ObjectPath>();
        }
        manager_->finishRegistration();
    }

    FakeUserManager(const FakeUserManager&) = delete;
    FakeUserManager& operator=(const FakeUserManager&) = delete;
    ~FakeUserManager() { connection_->leaveEventLoop(); }

    /// Appears on the bus, with the units it has.
    void comeUp() {
        connection_->requestName("org.freedesktop.systemd1");
        connection_->enterEventLoopAsync();
    }

    /// Adds a unit, and tells of it.
    void add(const std::string& unit, const std::string& state = "active") {
        {
            const std::lock_guard lock(mutex_);
            states_[unit] = state;
        }
        tell("UnitNew", unit);
    }

    void remove(const std::string& unit) {
        {
            const std::lock_guard lock(mutex_);
            states_.erase(unit);
        }
        tell("UnitRemoved", unit);
    }

    /// Changes a unit's state, and tells of it.
    void change(const std::string& unit, const std::string& state) {
        {
            const std::lock_guard lock(mutex_);
            states_[unit] = state;
        }
        if (!isSubscribed()) {
            return;
        }
        const auto object = sdbus::createObject(*connection_, pathOf(unit));
        object->registerProperty("ActiveState")
            .onInterface("org.freedesktop.systemd1.Unit")
            .withGetter([state] { return state; });
        object->finishRegistration();
        object->emitPropertiesChangedSignal("org.freedesktop.systemd1.Unit", {"ActiveState"});
    }

    /// From now on it takes questions without ever answering them, or answers again.
    void setHanging(bool isHanging) {
        const std::lock_guard lock(mutex_);
        isHanging_ = isHanging;
    }

    /// The patterns of each question for its units.
    [[nodiscard]] const Notes<std::vector<std::string>>& questions() const { return questions_; }

private:
    static constexpr const char* interface = "org.freedesktop.systemd1.Manager";

    /// A unit's object, as systemd names it.
    static sdbus::ObjectPath pathOf(const std::string& unit) {
        std::string path = "/org/freedesktop/systemd1/unit/";
        for (const char character : unit) {
            const auto byte = static_cast<unsigned char>(character);
            path += std::isalnum(byte) != 0 ? std::string(1, character) : fmt::format("_{:02x}", byte);
        }
        return sdbus::ObjectPath(path);
    }

    [[nodiscard]] bool isSubscribed() {
        const std::lock_guard lock(mutex_);
        return isSubscribed_;
    }

    void tell(const char* signal, const std::string& unit) {
        // Not with the lock: sending waits for the other thread, which may wait for the lock to answer.
        if (isSubscribed()) {
            manager_->emitSignal(signal).onInterface(interface).withArguments(unit, pathOf(unit));
        }
    }

    void list(sdbus::Result<Units>&& result, const std::vector<std::string>& patterns) {
        const std::lock_guard lock(mutex_);
        questions_.add(patterns);
        if (isHanging_) {
            unanswered_.push_back(std::move(result));
            return;
        }
        Units units;
        for (const auto& [unit, state] : states_) {
            units.emplace_back(unit, "", "loaded", state, "running", "", pathOf(unit), 0U, "",
                               sdbus::ObjectPath("/"));
        }
        result.returnResults(units);
    }

    std::mutex mutex_;
    bool isSubscribed_ = false;
    bool isHanging_ = false;
    /// By unit.
    std::map<std::string, std::string> states_;
    Notes<std::vector<std::string>> questions_;
    std::unique_ptr<sdbus::IConnection> connection_;
    std::vector<sdbus::Result<Units>> unanswered_;
    std::unique_ptr<sdbus::IObject> manager_;
};

}  // namespace corvane
