#include "platform/linux/desktop/UDisksLink.h"

#include <utility>

#include <fmt/format.h>

#include "platform/linux/BusNameWatch.h"

namespace corvane {

UDisksLink::UDisksLink(asio::io_context& context, UDisksPatience patience, Publish publish,
                       std::function<void()> onLost)
    : patience_(patience),
      publish_(std::move(publish)),
      connection_(sdbus::createSystemBusConnection()),
      timer_(context) {
    subscribe();
    manager_ = sdbus::createProxy(*connection_, UDisks::busName, UDisks::objectPath);
    pump_.emplace(context, *connection_, [onLost = std::move(onLost)](const std::string&) { onLost(); });
    pump_->process();
    refresh();
}

void UDisksLink::subscribe() {
    for (const char* interface : {UDisks::objectManager, "org.freedesktop.DBus.Properties"}) {
        subscriptions_.push_back(connection_->addMatch(
            fmt::format("type='signal',sender='{}',interface='{}'", UDisks::busName, interface),
            [this](sdbus::Message& /*signal*/) { refresh(); }));
    }
    subscriptions_.push_back(watchBusName(
        *connection_, UDisks::busName, [this](const OwnerChange& change) { changeOwner(change.current); }));
}

void UDisksLink::changeOwner(const std::string& owner) {
    forget();
    if (!owner.empty()) {
        refresh();
    }
}

void UDisksLink::refresh() {
    isOutdated_ = isAsking_;
    if (!isAsking_) {
        isAsking_ = true;
        giveUpAfter(patience_.answer);
        pump_->send([this] { ask(); });
    }
}

void UDisksLink::ask() {
    const auto call = manager_->createMethodCall(UDisks::objectManager, "GetManagedObjects");
    question_ = manager_->callMethod(
        call, [this](sdbus::MethodReply& reply, const sdbus::Error* error) { answered(reply, error); });
}

void UDisksLink::answered(sdbus::MethodReply& reply, const sdbus::Error* error) {
    isAsking_ = false;
    timer_.cancel();
    std::optional<Volumes> volumes;
    try {
        if (error == nullptr) {
            volumes = volumesOf(readUDisksObjects(reply));
        }
    } catch (const sdbus::Error&) {
        // Nonsense: nothing is known.
    }
    publish_(std::move(volumes));
    if (isOutdated_) {
        refresh();
    } else {
        refreshAfter(patience_.news);
    }
}

void UDisksLink::refreshAfter(std::chrono::milliseconds time) {
    timer_.expires_after(time);
    timer_.async_wait(lifetime_.bound([this](const std::error_code& error) {
        if (!error) {
            refresh();
        }
    }));
}

void UDisksLink::giveUpAfter(std::chrono::milliseconds time) {
    timer_.expires_after(time);
    timer_.async_wait(lifetime_.bound([this](const std::error_code& error) {
        if (!error) {
            forget();
            refreshAfter(patience_.news);
        }
    }));
}

void UDisksLink::forget() {
    timer_.cancel();
    question_.cancel();
    isAsking_ = false;
    isOutdated_ = false;
    publish_(std::nullopt);
}

}  // namespace corvane
