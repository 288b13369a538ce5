#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "platform/Lifetime.h"
#include "platform/Log.h"
#include "platform/PowerAssertions.h"
#include "platform/SerialQueue.h"
#include "platform/linux/desktop/BusThread.h"
#include "platform/linux/desktop/InhibitLink.h"

namespace corvane {

/// Asks the desktop's own service to keep the computer awake, and the login manager where there is none or
/// where it does not take the hold. Main loop.
///
/// Which service that is depends on who is on the session bus; see `InhibitMethod.h`. Not all listen to the
/// login manager, and the login manager's lock keeps the display on, too, on some: so a hold is with one of
/// them at a time. It moves when services come and go, and is taken again when they come up anew; the new
/// one is there before the old one goes. A service that does not answer counts as absent for a while, and
/// what it held ends with its bus. What
/// goes wrong is a line in the log, once.
class DesktopPowerAssertions final : public PowerAssertions {
public:
    /// All arguments outlive the assertions. The two buses are waited for on their own threads.
    DesktopPowerAssertions(BusThread& sessionBus, BusThread& systemBus, SerialQueue& mainLoop, Log& log,
                           InhibitPatience patience = {});
    ~DesktopPowerAssertions() override;

    /// Answers at once; the hold is taken soon after. None of a type there is not, and when there is nobody
    /// to ask on either bus.
    [[nodiscard]] std::optional<Id> create(std::string_view type, std::string_view name) override;
    void release(Id id) override;

private:
    /// One of the buses, as the main loop knows it.
    struct Side {
        BusThread& thread;
        /// Belongs to that thread.
        std::shared_ptr<InhibitLink> link;
        /// Unknown before the bus was reached.
        std::optional<bool> isPresent;
    };

    void begin(Side& side, const InhibitRoute& route, InhibitPatience patience,
               void (DesktopPowerAssertions::*held)(Id, bool));
    void changePresence(Side& side, bool isPresent);
    void heldBySession(Id id, bool isHeld);
    /// Nobody else could take it.
    void heldByLoginManager(Id /*id*/, bool /*isHeld*/) {}
    [[nodiscard]] Id nextId();
    static void want(Side& side, Id id, const PowerHold& hold);
    static void unwant(Side& side, Id id);

    SerialQueue& mainLoop_;
    Log& log_;
    Lifetime lifetime_;
    PowerHolds holds_;
    Id lastId_ = 0;
    Side session_;
    Side system_;
};

}  // namespace corvane
