#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include <sdbus-c++/sdbus-c++.h>

#include "platform/linux/HelperBus.h"
#include "tests/support/Notes.h"

namespace corvane {

/// A UPower on a bus, with the devices it is given. It answers on a thread of its own.
class FakeUPower {
public:
    using Properties = std::map<std::string, sdbus::Variant>;

    explicit FakeUPower(const std::string& bus) : connection_(HelperBus{bus}.connect()) {
        // The bus library makes something that all values share with the first of them. When that is on
        // another thread, ThreadSanitizer does not see how it is guarded.
        static_cast<void>(sdbus::Variant(false));
        manager_ = sdbus::createObject(*connection_, path);
        manager_->registerMethod("EnumerateDevices")
            .onInterface(interface)
            .implementedAs([this](sdbus::Result<std::vector<sdbus::ObjectPath>>&& result) {
                enumerate(std::move(result));
            });
        manager_->registerProperty("OnBattery").onInterface(interface).withGetter([this] {
            const std::lock_guard lock(mutex_);
            return isOnBattery_;
        });
        manager_->registerSignal("DeviceAdded").onInterface(interface).withParameters<sdbus::ObjectPath>();
        manager_->registerSignal("DeviceRemoved").onInterface(interface).withParameters<sdbus::ObjectPath>();
        manager_->finishRegistration();
    }

    FakeUPower(const FakeUPower&) = delete;
    FakeUPower& operator=(const FakeUPower&) = delete;
    ~FakeUPower() { connection_->leaveEventLoop(); }

    /// Appears on the bus, with the devices it has.
    void comeUp() {
        connection_->requestName("org.freedesktop.UPower");
        connection_->enterEventLoopAsync();
    }

    /// A laptop's battery as it is told of: 57 % of 50 Wh, discharging.
    static Properties battery() {
        return {{"Type", std::uint32_t{2}}, {"PowerSupply", true}, {"IsPresent", true},
                {"Energy", 28.5},           {"EnergyFull", 50.0},  {"Percentage", 57.0},
                {"State", std::uint32_t{2}}};
    }

    static Properties battery(const std::string& changed, const sdbus::Variant& value) {
        Properties properties = battery();
        properties[changed] = value;
        return properties;
    }

    /// Adds a device and tells of it.
    void add(const std::string& name, const Properties& properties) {
        const std::string device = devicePath(name);
        auto object = sdbus::createObject(*connection_, device);
        for (const auto& [property, value] : properties) {
            object->registerProperty(
                "org.freedesktop.UPower.Device", property, value.peekValueType(),
                [this, name, key = property](sdbus::PropertyGetReply& reply) { answer(reply, name, key); });
        }
        object->finishRegistration();
        {
            const std::lock_guard lock(mutex_);
            devices_[name] = properties;
        }
        objects_[name] = std::move(object);
        manager_->emitSignal("DeviceAdded").onInterface(interface).withArguments(sdbus::ObjectPath(device));
    }

    void remove(const std::string& name) {
        forget(name);
        objects_.erase(name);
        manager_->emitSignal("DeviceRemoved")
            .onInterface(interface)
            .withArguments(sdbus::ObjectPath(devicePath(name)));
    }

    /// The device is still listed but answers no more; nothing tells.
    void loseObject(const std::string& name) { objects_.erase(name); }

    /// Changes a property, to a value of the same type, and tells of it.
    void change(const std::string& name, const std::string& property, const sdbus::Variant& value) {
        {
            const std::lock_guard lock(mutex_);
            devices_[name][property] = value;
        }
        objects_.at(name)->emitPropertiesChangedSignal("org.freedesktop.UPower.Device", {property});
    }

    void setOnBattery(bool isOnBattery) {
        {
            const std::lock_guard lock(mutex_);
            isOnBattery_ = isOnBattery;
        }
        manager_->emitPropertiesChangedSignal(interface, {"OnBattery"});
    }

    /// From now on it takes calls for its devices without ever answering them, or answers again.
    void setHanging(bool isHanging) {
        const std::lock_guard lock(mutex_);
        isHanging_ = isHanging;
    }

    /// A note for each time its devices were asked for: whether it hung.
    [[nodiscard]] const Notes<bool>& enumerations() const { return enumerations_; }

private:
    static constexpr const char* path = "/org/freedesktop/UPower";
    static constexpr const char* interface = "org.freedesktop.UPower";

    static std::string devicePath(const std::string& name) {
        return "/org/freedesktop/UPower/devices/" + name;
    }

    void forget(const std::string& name) {
        const std::lock_guard lock(mutex_);
        devices_.erase(name);
    }

    void enumerate(sdbus::Result<std::vector<sdbus::ObjectPath>>&& result) {
        const std::lock_guard lock(mutex_);
        enumerations_.add(isHanging_);
        if (isHanging_) {
            unanswered_.push_back(std::move(result));
            return;
        }
        std::vector<sdbus::ObjectPath> paths;
        for (const auto& device : devices_) {
            // Newest first, unlike the names.
            paths.insert(paths.begin(), sdbus::ObjectPath(devicePath(device.first)));
        }
        result.returnResults(paths);
    }

    void answer(sdbus::PropertyGetReply& reply, const std::string& name, const std::string& property) {
        const std::lock_guard lock(mutex_);
        const sdbus::Variant value = devices_[name][property];
        if (value.containsValueOfType<bool>()) {
            reply << value.get<bool>();
        } else if (value.containsValueOfType<std::uint32_t>()) {
            reply << value.get<std::uint32_t>();
        } else if (value.containsValueOfType<double>()) {
            reply << value.get<double>();
        } else {
            reply << value.get<std::string>();
        }
    }

    std::mutex mutex_;
    bool isOnBattery_ = true;
    bool isHanging_ = false;
    std::map<std::string, Properties> devices_;
    Notes<bool> enumerations_;
    std::unique_ptr<sdbus::IConnection> connection_;
    std::vector<sdbus::Result<std::vector<sdbus::ObjectPath>>> unanswered_;
    std::unique_ptr<sdbus::IObject> manager_;
    std::map<std::string, std::unique_ptr<sdbus::IObject>> objects_;
};

}  // namespace corvane
