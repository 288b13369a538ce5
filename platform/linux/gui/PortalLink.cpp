#include "platform/linux/gui/PortalLink.h"

#include <cstdint>
#include <string>
#include <utility>

#include <fmt/format.h>
#include <sdbus-c++/sdbus-c++.h>

#include "platform/linux/BusNameWatch.h"

namespace corvane {

namespace {

// The names and numbers are those of the Settings portal.
constexpr const char* busName = "org.freedesktop.portal.Desktop";
constexpr const char* objectPath = "/org/freedesktop/portal/desktop";
constexpr const char* interface = "org.freedesktop.portal.Settings";
const std::string appearance = "org.freedesktop.appearance";
const std::string colorScheme = "color-scheme";
constexpr std::uint32_t preferDark = 1;
constexpr std::uint32_t preferLight = 2;

/// None for anything that is no preference. Some calls wrap the value once more.
std::optional<bool> preference(const sdbus::Variant& value) {
    if (value.containsValueOfType<sdbus::Variant>()) {
        return preference(value.get<sdbus::Variant>());
    }
    if (!value.containsValueOfType<std::uint32_t>()) {
        return std::nullopt;
    }
    switch (value.get<std::uint32_t>()) {
        case preferDark:
            return true;
        case preferLight:
            return false;
        default:
            return std::nullopt;
    }
}

}  // namespace

PortalLink::PortalLink(asio::io_context& context, HelperBus bus,
                       std::function<void(std::optional<bool>)> publish)
    : context_(context), bus_(std::move(bus)), publish_(std::move(publish)) {}

void PortalLink::start() {
    try {
        connection_ = bus_.connect();
        watch();
        portal_ = sdbus::createProxy(*connection_, busName, objectPath);
    } catch (const sdbus::Error&) {
        return;
    }
    pump_.emplace(context_, *connection_, [this](const std::string&) { know(std::nullopt); });
    pump_->process();
    ask();
}

void PortalLink::watch() {
    watches_.push_back(watchBusName(*connection_, busName, [this](const OwnerChange& change) {
        if (change.current.empty()) {
            know(std::nullopt);
        } else {
            ask();
        }
    }));
    watches_.push_back(connection_->addMatch(
        fmt::format("type='signal',sender='{}',interface='{}',member='SettingChanged',arg0='{}'", busName,
                    interface, appearance),
        // Whoever says so, the portal is asked what.
        [this](sdbus::Message&) { ask(); }));
}

void PortalLink::ask() {
    isOutdated_ = isAsking_;
    if (isAsking_) {
        return;
    }
    isAsking_ = true;
    pump_->send([this] {
        // The call refers to its name as long as it is put together.
        const std::string member = "Read";
        portal_->callMethodAsync(member)
            .onInterface(interface)
            .withArguments(appearance, colorScheme)
            .uponReplyInvoke(
                [this](const sdbus::Error* error, const sdbus::Variant& value) { answered(error, value); });
    });
}

void PortalLink::answered(const sdbus::Error* error, const sdbus::Variant& value) {
    isAsking_ = false;
    know(error == nullptr ? preference(value) : std::nullopt);
    if (isOutdated_) {
        ask();
    }
}

void PortalLink::know(std::optional<bool> prefersDark) {
    if (std::exchange(prefersDark_, prefersDark) != prefersDark) {
        publish_(prefersDark);
    }
}

}  // namespace corvane
