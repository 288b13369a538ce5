#include "platform/linux/desktop/UPowerLink.h"

#include <utility>

#include <fmt/format.h>

#include "platform/linux/BusNameWatch.h"

namespace corvane {

UPowerLink::UPowerLink(asio::io_context& context, UPowerPatience patience, Publish publish,
                       std::function<void()> onLost)
    : context_(context),
      patience_(patience),
      publish_(std::move(publish)),
      connection_(sdbus::createSystemBusConnection()),
      newsTimer_(context) {
    subscribe();
    read();
    pump_.emplace(context_, *connection_, [onLost = std::move(onLost)](const std::string&) { onLost(); });
    pump_->process();
}

void UPowerLink::subscribe() {
    // Devices come and go by signals of the manager; all else is a change of properties.
    for (const char* interface : {UPower::interface, "org.freedesktop.DBus.Properties"}) {
        subscriptions_.push_back(connection_->addMatch(
            fmt::format("type='signal',sender='{}',interface='{}'", UPower::busName, interface),
            [this](sdbus::Message& /*signal*/) { refresh(); }));
    }
    subscriptions_.push_back(watchBusName(
        *connection_, UPower::busName, [this](const OwnerChange& change) { changeOwner(change.current); }));
}

void UPowerLink::changeOwner(const std::string& newOwner) {
    forget();
    if (!newOwner.empty()) {
        refresh();
    }
}

void UPowerLink::refresh() {
    if (reading_) {
        isOutdated_ = true;
        return;
    }
    try {
        read();
    } catch (const sdbus::Error&) {
        forget();
    }
}

void UPowerLink::read() {
    newsTimer_.cancel();
    isOutdated_ = false;
    reading_.emplace(context_, *connection_, patience_.answers,
                     [this](std::optional<Batteries> result) { finishReading(std::move(result)); });
}

void UPowerLink::finishReading(std::optional<Batteries> result) {
    reading_.reset();
    const bool isKnown = result.has_value();
    publish_(std::move(result));
    if (isOutdated_) {
        pump_->send([this] { refresh(); });
    } else if (isKnown) {
        waitForNews();
    }
}

void UPowerLink::waitForNews() {
    newsTimer_.expires_after(patience_.news);
    newsTimer_.async_wait(lifetime_.bound([this](const std::error_code& error) {
        if (!error) {
            pump_->send([this] { refresh(); });
        }
    }));
}

void UPowerLink::forget() {
    newsTimer_.cancel();
    reading_.reset();
    isOutdated_ = false;
    publish_(std::nullopt);
}

}  // namespace corvane
