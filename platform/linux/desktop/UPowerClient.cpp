#include "platform/linux/desktop/UPowerClient.h"

#include <utility>

#include <fmt/format.h>

#include "platform/linux/BusNameWatch.h"

namespace corvane {

UPowerClient::UPowerClient(asio::io_context& context, UPowerPatience patience,
                           std::function<void(std::optional<Batteries>)> publish)
    : context_(context), patience_(patience), publish_(std::move(publish)), newsTimer_(context) {}

void UPowerClient::start() {
    try {
        connection_ = sdbus::createSystemBusConnection();
        subscribe();
        read();
    } catch (const sdbus::Error&) {
        forget();
        return;
    }
    pump_.emplace(context_, *connection_, [this](const std::string&) { forget(); });
    pump_->process();
}

void UPowerClient::subscribe() {
    // Devices come and go by signals of the manager; all else is a change of properties.
    for (const char* interface : {UPower::interface, "org.freedesktop.DBus.Properties"}) {
        subscriptions_.push_back(connection_->addMatch(
            fmt::format("type='signal',sender='{}',interface='{}'", UPower::busName, interface),
            [this](sdbus::Message& /*signal*/) { refresh(); }));
    }
    subscriptions_.push_back(watchBusName(
        *connection_, UPower::busName, [this](const OwnerChange& change) { changeOwner(change.current); }));
}

void UPowerClient::changeOwner(const std::string& newOwner) {
    forget();
    if (!newOwner.empty()) {
        refresh();
    }
}

void UPowerClient::refresh() {
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

void UPowerClient::read() {
    newsTimer_.cancel();
    isOutdated_ = false;
    reading_.emplace(context_, *connection_, patience_.answers,
                     [this](std::optional<Batteries> result) { finishReading(std::move(result)); });
}

void UPowerClient::finishReading(std::optional<Batteries> result) {
    reading_.reset();
    const bool isKnown = result.has_value();
    publish_(std::move(result));
    if (isOutdated_) {
        pump_->send([this] { refresh(); });
    } else if (isKnown) {
        waitForNews();
    }
}

void UPowerClient::waitForNews() {
    newsTimer_.expires_after(patience_.news);
    newsTimer_.async_wait(lifetime_.bound([this](const std::error_code& error) {
        if (!error) {
            pump_->send([this] { refresh(); });
        }
    }));
}

void UPowerClient::forget() {
    newsTimer_.cancel();
    reading_.reset();
    isOutdated_ = false;
    publish_(std::nullopt);
}

}  // namespace corvane
