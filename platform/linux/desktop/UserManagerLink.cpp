#include "platform/linux/desktop/UserManagerLink.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include <fmt/format.h>

#include "platform/linux/BusNameWatch.h"
#include "platform/linux/desktop/ApplicationUnit.h"

namespace corvane {

namespace {

// The names are systemd's.
constexpr const char* busName = "org.freedesktop.systemd1";
constexpr const char* objectPath = "/org/freedesktop/systemd1";
constexpr const char* managerInterface = "org.freedesktop.systemd1.Manager";
constexpr const char* unitInterface = "org.freedesktop.systemd1.Unit";

/// Far more than run at a time.
constexpr std::size_t mostUnits = 4096;

const std::vector<std::string> runningStates = {"active", "reloading"};
const std::vector<std::string> namePatterns = {"app-*", "dbus-*"};

/// Of an application's unit, with the hyphen escaped.
bool isOfApplication(std::string_view unitPath) {
    constexpr std::string_view folder = "/org/freedesktop/systemd1/unit/";
    const std::string_view name = unitPath.substr(std::min(folder.size(), unitPath.size()));
    return unitPath.starts_with(folder) && (name.starts_with("app_2d") || name.starts_with("dbus_2d"));
}

/// The object of the unit that a signal of the manager is about; empty for a signal of another shape. An
/// error that leaves its handler would be taken for one of the bus.
std::string unitOf(sdbus::Message& signal) {
    std::string name;
    sdbus::ObjectPath path;
    try {
        signal >> name >> path;
    } catch (const sdbus::Error&) {
        path.clear();
    }
    return path;
}

}  // namespace

UserManagerLink::UserManagerLink(asio::io_context& context, std::unique_ptr<sdbus::IConnection> connection,
                                 UserManagerPatience patience, Publish publish, std::function<void()> onLost)
    : patience_(patience),
      publish_(std::move(publish)),
      timer_(context),
      connection_(std::move(connection)),
      manager_(sdbus::createProxy(*connection_, busName, objectPath)),
      pump_(context, *connection_,
            [onLost = std::move(onLost)](const std::string& /*reason*/) { onLost(); }) {
    subscribe();
}

void UserManagerLink::start() {
    pump_.send([this] { follow(); });
    pump_.process();
}

void UserManagerLink::subscribe() {
    const std::string sender = fmt::format("type='signal',sender='{}'", busName);
    for (const char* member : {"UnitNew", "UnitRemoved"}) {
        subscriptions_.push_back(connection_->addMatch(
            fmt::format("{},interface='{}',member='{}'", sender, managerInterface, member),
            [this](sdbus::Message& signal) {
                if (isOfApplication(unitOf(signal))) {
                    refresh();
                }
            }));
    }
    subscriptions_.push_back(connection_->addMatch(
        fmt::format("{},interface='org.freedesktop.DBus.Properties',arg0='{}'", sender, unitInterface),
        [this](sdbus::Message& signal) {
            if (isOfApplication(signal.getPath())) {
                refresh();
            }
        }));
    subscriptions_.push_back(watchBusName(*connection_, busName, [this](const OwnerChange& change) {
        isReading_ = false;
        if (change.current.empty()) {
            timer_.cancel();
            publish_(std::nullopt);
        } else {
            follow();
        }
    }));
}

/// Begins with a manager that has come up. Within a handler of the connection, or within `BusPump::send`.
void UserManagerLink::follow() {
    try {
        // Otherwise it tells of nothing. An older one that has no such list is no use, subscribed or not.
        manager_->callMethodAsync("Subscribe")
            .onInterface(managerInterface)
            .uponReplyInvoke([](const sdbus::Error* /*error*/) {});
        read();
    } catch (const sdbus::Error&) {
        publish_(std::nullopt);
    }
}

/// Reads now, or again after the reading under way. As `follow`.
void UserManagerLink::refresh() {
    if (isReading_) {
        isOutdated_ = true;
        return;
    }
    try {
        read();
    } catch (const sdbus::Error&) {
        publish_(std::nullopt);
    }
}

void UserManagerLink::read() {
    isOutdated_ = false;
    isReading_ = true;
    ++reading_;
    manager_->callMethodAsync("ListUnitsByPatterns")
        .onInterface(managerInterface)
        .withArguments(runningStates, namePatterns)
        .uponReplyInvoke(
            [this, number = reading_](const sdbus::Error* error, const std::vector<Unit>& units) {
                if (isReading_ && number == reading_) {
                    finishReading(error == nullptr ? std::optional(runningAmong(units)) : std::nullopt);
                }
            });
    wait(patience_.answer, [this] { finishReading(std::nullopt); });
}

void UserManagerLink::finishReading(std::optional<Identifiers> result) {
    timer_.cancel();
    isReading_ = false;
    const bool isKnown = result.has_value();
    publish_(std::move(result));
    if (isKnown && isOutdated_) {
        pump_.send([this] { refresh(); });
    } else if (!isKnown) {
        wait(patience_.retry, [this] { pump_.send([this] { follow(); }); });
    }
}

void UserManagerLink::wait(std::chrono::milliseconds time, std::function<void()> work) {
    timer_.expires_after(time);
    timer_.async_wait(lifetime_.bound([work = std::move(work)](const std::error_code& error) {
        if (!error) {
            work();
        }
    }));
}

UserManagerLink::Identifiers UserManagerLink::runningAmong(const std::vector<Unit>& units) {
    Identifiers running;
    std::for_each_n(units.begin(), std::min(units.size(), mostUnits), [&](const Unit& unit) {
        // A manager that does not choose by state may be any program.
        if (std::ranges::find(runningStates, unit.get<3>()) != runningStates.end()) {
            if (auto identifier = applicationOfUnit(unit.get<0>())) {
                running.insert(std::move(*identifier));
            }
        }
    });
    return running;
}

}  // namespace corvane
