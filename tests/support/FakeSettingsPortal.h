#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include <sdbus-c++/sdbus-c++.h>

#include "platform/linux/HelperBus.h"

namespace corvane {

/// A desktop's portal for settings on a bus, with one setting, on a thread of its own.
class FakeSettingsPortal {
public:
    FakeSettingsPortal(const std::string& bus, sdbus::Variant colorScheme)
        : colorScheme_(std::move(colorScheme)), connection_(HelperBus{bus}.connect()) {
        object_ = sdbus::createObject(*connection_, "/org/freedesktop/portal/desktop");
        object_->registerMethod("Read").onInterface(interface).implementedAs(
            [this](const std::string& space, const std::string& key) { return read(space, key); });
        object_->registerSignal("SettingChanged")
            .onInterface(interface)
            .withParameters<std::string, std::string, sdbus::Variant>();
        object_->finishRegistration();
        connection_->requestName("org.freedesktop.portal.Desktop");
        connection_->enterEventLoopAsync();
    }
    FakeSettingsPortal(const FakeSettingsPortal&) = delete;
    FakeSettingsPortal& operator=(const FakeSettingsPortal&) = delete;
    ~FakeSettingsPortal() { connection_->leaveEventLoop(); }

    /// Changes the setting and tells of it.
    void set(const sdbus::Variant& colorScheme) {
        {
            const std::lock_guard lock(mutex_);
            colorScheme_ = colorScheme;
        }
        object_->emitSignal("SettingChanged").onInterface(interface).withArguments(space_, key_, colorScheme);
    }

private:
    static constexpr const char* interface = "org.freedesktop.portal.Settings";

    /// Wrapped once more, as this call always does it.
    sdbus::Variant read(const std::string& space, const std::string& key) {
        if (space != space_ || key != key_) {
            throw sdbus::Error("org.freedesktop.portal.Error.NotFound", "Requested setting not found");
        }
        const std::lock_guard lock(mutex_);
        return sdbus::Variant(colorScheme_);
    }

    const std::string space_ = "org.freedesktop.appearance";
    const std::string key_ = "color-scheme";
    std::mutex mutex_;
    sdbus::Variant colorScheme_;
    std::unique_ptr<sdbus::IConnection> connection_;
    std::unique_ptr<sdbus::IObject> object_;
};

}  // namespace corvane
