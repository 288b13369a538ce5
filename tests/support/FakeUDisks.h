#pragma once

#include <condition_variable>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include <fmt/format.h>
#include <sdbus-c++/sdbus-c++.h>

#include "platform/linux/HelperBus.h"
#include "tests/support/Notes.h"

namespace corvane {

/// A UDisks on a bus, with the objects it is given. It answers on a thread of its own.
class FakeUDisks {
public:
    /// By interface, without what all of them begin with, and name.
    using Properties = std::map<std::string, std::map<std::string, sdbus::Variant>>;

    explicit FakeUDisks(const std::string& bus) : connection_(HelperBus{bus}.connect()) {
        root_ = sdbus::createObject(*connection_, root);
        root_->addObjectManager();
        root_->finishRegistration();
    }
    FakeUDisks(const FakeUDisks&) = delete;
    FakeUDisks& operator=(const FakeUDisks&) = delete;
    ~FakeUDisks() {
        setHanging(false);
        connection_->leaveEventLoop();
    }

    /// Appears on the bus, with the objects it has.
    void comeUp() {
        connection_->requestName("org.freedesktop.UDisks2");
        connection_->enterEventLoopAsync();
    }

    static std::string path(const std::string& name) { return std::string(root) + '/' + name; }

    /// Paths as they are told: bytes, each ended by a NUL.
    static sdbus::Variant mountPoints(const std::vector<std::string>& paths) {
        std::vector<std::vector<std::uint8_t>> points;
        for (const std::string& path : paths) {
            points.emplace_back(path.begin(), path.end()).push_back(0);
        }
        return sdbus::Variant(points);
    }

    /// A file system on a drive.
    static Properties block(const std::string& drive, const std::string& label,
                            const std::vector<std::string>& mounts) {
        return {{"Block",
                 {{"IdLabel", sdbus::Variant(label)},
                  {"Drive", sdbus::Variant(sdbus::ObjectPath(path(drive)))},
                  {"CryptoBackingDevice", sdbus::Variant(sdbus::ObjectPath("/"))},
                  {"HintSystem", sdbus::Variant(true)},
                  {"HintIgnore", sdbus::Variant(false)}}},
                {"Filesystem", {{"MountPoints", mountPoints(mounts)}}}};
    }
    static Properties drive(const std::string& connectionBus) {
        return {{"Drive",
                 {{"ConnectionBus", sdbus::Variant(connectionBus)},
                  {"Removable", sdbus::Variant(false)},
                  {"MediaRemovable", sdbus::Variant(false)}}}};
    }

    /// Adds an object and tells of it.
    void add(const std::string& name, const Properties& properties) {
        auto object = sdbus::createObject(*connection_, path(name));
        for (const auto& [interface, values] : properties) {
            for (const auto& [property, value] : values) {
                const std::string key = fmt::format("{} {}.{}", name, interface, property);
                setValue(key, value);
                object->registerProperty(interfacePrefix + interface, property, value.peekValueType(),
                                         [this, key](sdbus::PropertyGetReply& reply) { answer(reply, key); });
            }
        }
        object->finishRegistration();
        object->emitInterfacesAddedSignal();
        objects_[name] = std::move(object);
    }

    void remove(const std::string& name) {
        objects_.erase(name);
        // Told of when it is gone, not before.
        auto signal = root_->createSignal("org.freedesktop.DBus.ObjectManager", "InterfacesRemoved");
        signal << sdbus::ObjectPath(path(name)) << std::vector<std::string>{interfacePrefix + "Block"};
        root_->emitSignal(signal);
    }

    /// Changes a property, to a value of the same type, and tells of it.
    void change(const std::string& name, const std::string& interface, const std::string& property,
                const sdbus::Variant& value) {
        setValue(name + ' ' + interface + '.' + property, value);
        objects_.at(name)->emitPropertiesChangedSignal(interfacePrefix + interface, {property});
    }

    /// From now on it does not answer, or answers again.
    void setHanging(bool isHanging) {
        {
            const std::lock_guard lock(mutex_);
            isHanging_ = isHanging;
        }
        changed_.notify_all();
    }

    /// A note for each property that it was asked for.
    [[nodiscard]] const Notes<std::string>& questions() const { return questions_; }

private:
    static constexpr const char* root = "/org/freedesktop/UDisks2";
    inline static const std::string interfacePrefix = "org.freedesktop.UDisks2.";

    void setValue(const std::string& key, const sdbus::Variant& value) {
        const std::lock_guard lock(mutex_);
        values_[key] = value;
    }

    void answer(sdbus::PropertyGetReply& reply, const std::string& key) {
        questions_.add(key);
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return !isHanging_; });
        const sdbus::Variant& value = values_.at(key);
        const std::string type = value.peekValueType();
        if (type == "b") {
            reply << value.get<bool>();
        } else if (type == "u") {
            reply << value.get<std::uint32_t>();
        } else if (type == "o") {
            reply << value.get<sdbus::ObjectPath>();
        } else if (type == "aay") {
            reply << value.get<std::vector<std::vector<std::uint8_t>>>();
        } else {
            reply << value.get<std::string>();
        }
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    bool isHanging_ = false;
    std::map<std::string, sdbus::Variant> values_;
    Notes<std::string> questions_;
    std::unique_ptr<sdbus::IConnection> connection_;
    std::unique_ptr<sdbus::IObject> root_;
    std::map<std::string, std::unique_ptr<sdbus::IObject>> objects_;
};

}  // namespace corvane
