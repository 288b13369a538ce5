#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include <asio/io_context.hpp>
#include <asio/steady_timer.hpp>
#include <sdbus-c++/sdbus-c++.h>

#include "platform/Lifetime.h"
#include "platform/Log.h"
#include "platform/linux/BusNameWatch.h"
#include "platform/linux/BusPump.h"
#include "platform/linux/HelperBus.h"
#include "platform/linux/desktop/InhibitMethod.h"
#include "platform/linux/desktop/WantedHolds.h"
#include "platform/posix/FileDescriptor.h"

namespace corvane {

/// Where holds are taken: a bus, the names on it that matter, and who is asked when these are owned.
struct InhibitRoute {
    HelperBus bus;
    std::span<const char* const> names;
    const InhibitMethod* (*choose)(const BusOwners& owners, IdleKind kind);
};

/// How long is waited. Tests have less time.
struct InhibitPatience {
    /// For a service's answer, before its bus is left: whatever it does late then holds nothing. What it gave
    /// before ends with that too, and the bus is soon tried again.
    std::chrono::milliseconds answers = std::chrono::seconds(5);
    /// Before a bus that was left, lost or not found is tried again.
    std::chrono::milliseconds retry = std::chrono::seconds(60);
    /// Before a service that refused, or did not answer, is asked again, and twice as long each time after
    /// that. Services have their names before they are ready.
    std::chrono::milliseconds again = std::chrono::seconds(1);
};

/// Keeps the wanted holds taken on one bus, wherever the services there come and go. Belongs to the thread
/// that runs `context`, but for `wanted`.
///
/// It asks for one hold at a time and looks afterwards at what is wanted by then. So a slow service is not
/// flooded, and a hold that is no longer wanted when its answer comes is let go. A service that takes no more
/// than a reason gets a connection for each hold, and its answer is waited for on the thread; there, silence
/// counts as a refusal and costs nothing that is held.
class InhibitLink {
public:
    using Id = PowerAssertions::Id;

    /// How often a service that refuses is asked again, until it comes up anew. Bounded: what refuses may
    /// have taken something all the same.
    static constexpr int mostRepeats = 6;

    struct Events {
        /// There is somebody to ask on this bus, or nobody. Told at first and with each change.
        std::function<void(bool isThere)> presence;
        /// A wanted hold is taken here, or is not. Told of each at first and with each change.
        std::function<void(Id id, bool isHeld)> held;
    };

    /// `log` outlives the link. Events are not told before `start`, nor within a call of the owner's.
    InhibitLink(asio::io_context& context, InhibitRoute route, InhibitPatience patience, Log& log,
                Events events);
    InhibitLink(const InhibitLink&) = delete;
    InhibitLink& operator=(const InhibitLink&) = delete;
    /// Lets go of everything.
    ~InhibitLink() = default;

    /// Connects, which waits for the bus, and begins. Called once.
    void start() { connect(); }

    /// Any thread, as long as the link lives.
    [[nodiscard]] WantedHolds& wanted() { return wanted_; }

    /// Takes and lets go according to what is wanted now.
    void follow();

private:
    /// Who is asked, and how.
    struct Target {
        const InhibitMethod* method;
        std::string owner;

        bool operator==(const Target&) const = default;
    };
    /// What a service gave: a number that only it understands, or a descriptor.
    struct Grant {
        Target target;
        std::uint32_t number = 0;
        std::shared_ptr<const FileDescriptor> lock;
        /// What it was taken over, if not over the link's connection.
        std::shared_ptr<sdbus::IConnection> connection;
    };
    struct Kept {
        /// Whom it was last asked of, successfully or not.
        std::optional<Target> asked;
        std::optional<Grant> grant;
        /// What was told last.
        std::optional<bool> isHeld;
    };

    void connect();
    void watchNames();
    void changeOwner(const std::string& name, const std::string& owner);
    void disconnect(const std::string& reason);
    void followSoon();
    [[nodiscard]] std::chrono::milliseconds timeToRetry() const;

    [[nodiscard]] std::optional<Target> targetFor(IdleKind kind) const;
    [[nodiscard]] sdbus::IProxy& proxyFor(const Target& target);
    void forgetFormerOwners();
    void letGoOfUnwanted();
    void letGo(const Grant& grant);
    static void giveBack(sdbus::IProxy& proxy, const Grant& grant);
    void ask(Id id, const PowerHold& hold, const Target& target);
    void sendInhibit(Id id, const PowerHold& hold, const Target& target);
    void inhibitOverOwnConnection(Id id, const PowerHold& hold, const Target& target);
    void answeredWithLock(Id id, const sdbus::Error* error, Grant grant);
    void answered(Id id, const sdbus::Error* error, Grant grant);
    void askAgainLater();
    void askAgain();

    void tellPresence();
    void tellHeld(Id id, Kept& kept, bool isHeld);
    void complain(const std::string& complaint);

    asio::io_context& context_;
    InhibitRoute route_;
    InhibitPatience patience_;
    Log& log_;
    Events events_;
    WantedHolds wanted_;
    PowerHolds holds_;
    std::map<Id, Kept> kept_;
    std::optional<bool> isPresent_;
    /// The one in the log; empty while all is well.
    std::string complaint_;
    bool isAsking_ = false;
    asio::steady_timer deadline_;
    asio::steady_timer retry_;
    asio::steady_timer again_;
    bool isToAskAgain_ = false;
    int repeats_ = 0;
    /// Calls in a row that were not answered.
    int silences_ = 0;
    Lifetime lifetime_;
    BusOwners owners_;
    // Destroyed from the last to the first: what uses the connection before it.
    std::unique_ptr<sdbus::IConnection> connection_;
    std::vector<sdbus::Slot> watches_;
    /// By owner and object.
    std::map<std::pair<std::string, std::string>, std::unique_ptr<sdbus::IProxy>> proxies_;
    std::optional<BusPump> pump_;
};

}  // namespace corvane
