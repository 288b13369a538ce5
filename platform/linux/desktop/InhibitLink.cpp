#include "platform/linux/desktop/InhibitLink.h"

#include <algorithm>

#include <asio/post.hpp>
#include <fcntl.h>
#include <fmt/format.h>

#include "platform/ApplicationIdentifier.h"

namespace corvane {

namespace {

constexpr const char* application = "Corvane";
constexpr std::uint32_t noWindow = 0;

/// The bus library's own copies would be inherited by every program that is started, and hold the lock for as
/// long as it runs.
std::shared_ptr<const FileDescriptor> keepToThisProcess(const sdbus::UnixFd& lock) {
    return std::make_shared<const FileDescriptor>(fcntl(lock.get(), F_DUPFD_CLOEXEC, 0));
}

}  // namespace

InhibitLink::InhibitLink(asio::io_context& context, InhibitRoute route, InhibitPatience patience, Log& log,
                         Events events)
    : context_(context),
      route_(std::move(route)),
      patience_(patience),
      log_(log),
      events_(std::move(events)),
      deadline_(context),
      retry_(context),
      again_(context) {}

void InhibitLink::connect() {
    try {
        connection_ = route_.bus.connect();
        connection_->setMethodCallTimeout(patience_.answers);
        watchNames();
    } catch (const sdbus::Error& error) {
        disconnect(error.getMessage());
        return;
    }
    pump_.emplace(context_, *connection_, [this](const std::string& reason) {
        // It is the pump that calls.
        asio::post(context_, lifetime_.bound([this, reason] { disconnect(reason); }));
    });
    pump_->process();
    tellPresence();
    follow();
}

void InhibitLink::watchNames() {
    for (const std::string name : route_.names) {
        watches_.push_back(watchBusName(*connection_, name, [this, name](const OwnerChange& change) {
            changeOwner(name, change.current);
        }));
        if (std::string owner = busNameOwner(*connection_, name); !owner.empty()) {
            owners_[name] = std::move(owner);
        }
    }
}

void InhibitLink::changeOwner(const std::string& name, const std::string& owner) {
    if (owner.empty()) {
        owners_.erase(name);
    } else {
        owners_[name] = owner;
    }
    repeats_ = 0;
    tellPresence();
    followSoon();
}

/// Services let go of what was taken over a connection that ends; the login manager's descriptors last.
void InhibitLink::disconnect(const std::string& reason) {
    complain(fmt::format("the {} bus cannot be used: {}", route_.bus.name, reason));
    deadline_.cancel();
    isAsking_ = false;
    repeats_ = 0;
    pump_.reset();
    proxies_.clear();
    watches_.clear();
    connection_.reset();
    owners_.clear();
    for (auto& [id, kept] : kept_) {
        if (kept.grant && !kept.grant->lock) {
            kept.grant.reset();
        }
    }
    tellPresence();
    follow();
    retry_.expires_after(timeToRetry());
    retry_.async_wait(lifetime_.bound([this](const std::error_code& error) {
        if (!error) {
            connect();
        }
    }));
}

/// What was granted went with the connection: a service that was only slow is to give it again soon, one that
/// hangs is left alone more and more.
std::chrono::milliseconds InhibitLink::timeToRetry() const {
    const int doublings = std::min(silences_ - 1, mostRepeats);
    return silences_ == 0 ? patience_.retry : std::min(patience_.retry, patience_.again * (1 << doublings));
}

/// Not within a handler of a proxy, which may have to be destroyed.
void InhibitLink::followSoon() {
    asio::post(context_, lifetime_.bound([this] { follow(); }));
}

void InhibitLink::follow() {
    wanted_.readInto(holds_);
    letGoOfUnwanted();
    if (!isAsking_) {
        forgetFormerOwners();
    }
    for (const auto& [id, hold] : holds_) {
        Kept& kept = kept_[id];
        const std::optional<Target> target = targetFor(hold.kind);
        if (!target) {
            kept.asked.reset();
            tellHeld(id, kept, false);
        } else if (!isAsking_ && kept.asked != target) {
            ask(id, hold, *target);
        }
    }
}

std::optional<InhibitLink::Target> InhibitLink::targetFor(IdleKind kind) const {
    const InhibitMethod* method = route_.choose(owners_, kind);
    return method == nullptr ? std::nullopt : std::optional(Target{method, owners_.at(method->busName)});
}

/// Addressed to the owner itself: its successor's numbers mean something else.
sdbus::IProxy& InhibitLink::proxyFor(const Target& target) {
    auto& proxy = proxies_[{target.owner, target.method->objectPath}];
    if (!proxy) {
        proxy = sdbus::createProxy(*connection_, target.owner, target.method->objectPath);
    }
    return *proxy;
}

void InhibitLink::forgetFormerOwners() {
    std::erase_if(proxies_, [this](const auto& known) {
        return std::ranges::none_of(owners_,
                                    [&](const auto& owner) { return owner.second == known.first.first; });
    });
}

void InhibitLink::letGoOfUnwanted() {
    std::erase_if(kept_, [this](const auto& kept) {
        if (holds_.contains(kept.first)) {
            return false;
        }
        if (kept.second.grant) {
            letGo(*kept.second.grant);
        }
        return true;
    });
}

void InhibitLink::giveBack(sdbus::IProxy& proxy, const Grant& grant) {
    const InhibitMethod& method = *grant.target.method;
    proxy.callMethod(method.release)
        .onInterface(method.interface)
        .withArguments(grant.number)
        .dontExpectReply();
}

/// A descriptor or a connection is closed by whoever destroys the grant. One who is gone need not be told.
void InhibitLink::letGo(const Grant& grant) {
    const InhibitMethod& method = *grant.target.method;
    if (grant.connection) {
        const auto own = sdbus::createProxy(*grant.connection, grant.target.owner, method.objectPath);
        pump_->send([&] { giveBack(*own, grant); });
        return;
    }
    const auto proxy = proxies_.find({grant.target.owner, method.objectPath});
    if (method.release == nullptr || proxy == proxies_.end()) {
        return;
    }
    pump_->send([&] { giveBack(*proxy->second, grant); });
}

void InhibitLink::ask(Id id, const PowerHold& hold, const Target& target) {
    isAsking_ = true;
    if (target.method->form == InhibitMethod::Form::reason) {
        inhibitOverOwnConnection(id, hold, target);
        return;
    }
    deadline_.expires_after(patience_.answers);
    deadline_.async_wait(lifetime_.bound([this, name = target.method->busName](const std::error_code& error) {
        if (!error && isAsking_) {
            ++silences_;
            disconnect(fmt::format("{} does not answer", name));
        }
    }));
    pump_->send([&] { sendInhibit(id, hold, target); });
}

void InhibitLink::sendInhibit(Id id, const PowerHold& hold, const Target& target) {
    const InhibitMethod& method = *target.method;
    // The call refers to its name as long as it is put together.
    const std::string member = "Inhibit";
    auto call = proxyFor(target).callMethodAsync(member);
    call.onInterface(method.interface);
    if (method.form == InhibitMethod::Form::lock) {
        call.withArguments("idle", application, hold.reason, "block");
        call.uponReplyInvoke([this, id, target](const sdbus::Error* error, const sdbus::UnixFd& lock) {
            answeredWithLock(id, error, {target, 0, keepToThisProcess(lock), {}});
        });
    } else {
        call.withArguments(applicationIdentifier, noWindow, hold.reason, method.flags);
        call.uponReplyInvoke([this, id, target](const sdbus::Error* error, std::uint32_t number) {
            answered(id, error, {target, number, {}, {}});
        });
    }
}

/// XFCE's power manager forgets one hold of a connection that ends, and keeps the others for ever: each gets
/// a connection of its own, whose end lets go of it. Waits for the service, at most as long as for any
/// answer.
void InhibitLink::inhibitOverOwnConnection(Id id, const PowerHold& hold, const Target& target) {
    const InhibitMethod& method = *target.method;
    try {
        const std::shared_ptr<sdbus::IConnection> own = route_.bus.connect();
        own->setMethodCallTimeout(patience_.answers);
        std::uint32_t number = 0;
        sdbus::createProxy(*own, target.owner, method.objectPath)
            ->callMethod("Inhibit")
            .onInterface(method.interface)
            .withArguments(application, hold.reason)
            .storeResultsTo(number);
        answered(id, nullptr, {target, number, {}, own});
    } catch (const sdbus::Error& error) {
        answered(id, &error, {target, 0, {}, {}});
    }
}

/// A lock that there was no descriptor left for is gone.
void InhibitLink::answeredWithLock(Id id, const sdbus::Error* error, Grant grant) {
    const sdbus::Error noDescriptor("org.freedesktop.DBus.Error.LimitsExceeded",
                                    "no descriptor for the lock");
    const bool isLost = error == nullptr && !grant.lock->isOpen();
    answered(id, isLost ? &noDescriptor : error, std::move(grant));
}

void InhibitLink::answered(Id id, const sdbus::Error* error, Grant grant) {
    isAsking_ = false;
    silences_ = 0;
    deadline_.cancel();
    followSoon();
    if (error != nullptr) {
        complain(fmt::format("{} refuses: {}", grant.target.method->busName, error->getMessage()));
        askAgainLater();
    } else {
        complaint_.clear();
        repeats_ = 0;
    }
    const auto found = kept_.find(id);
    if (found == kept_.end()) {
        if (error == nullptr) {
            letGo(grant);
        }
        return;
    }
    Kept& kept = found->second;
    kept.asked = grant.target;
    if (error == nullptr) {
        const auto former = std::exchange(kept.grant, std::move(grant));
        if (former) {
            letGo(*former);
        }
    }
    tellHeld(id, kept, error == nullptr);
}

void InhibitLink::askAgainLater() {
    if (isToAskAgain_ || repeats_ == mostRepeats) {
        return;
    }
    isToAskAgain_ = true;
    again_.expires_after(patience_.again * (1 << repeats_++));
    again_.async_wait(lifetime_.bound([this](const std::error_code& error) {
        isToAskAgain_ = false;
        if (!error) {
            askAgain();
        }
    }));
}

void InhibitLink::askAgain() {
    for (auto& [id, kept] : kept_) {
        if (kept.isHeld == false) {
            kept.asked.reset();
        }
    }
    follow();
}

void InhibitLink::tellPresence() {
    const bool isPresent = targetFor(IdleKind::system) || targetFor(IdleKind::display);
    if (isPresent_ != isPresent) {
        isPresent_ = isPresent;
        events_.presence(isPresent);
    }
}

void InhibitLink::tellHeld(Id id, Kept& kept, bool isHeld) {
    if (kept.isHeld != isHeld) {
        kept.isHeld = isHeld;
        events_.held(id, isHeld);
    }
}

void InhibitLink::complain(const std::string& complaint) {
    if (complaint_ != complaint) {
        complaint_ = complaint;
        log_.write(fmt::format("Corvane: keeping awake: {}", complaint));
    }
}

}  // namespace corvane
