#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "platform/HotKeyService.h"
#include "platform/Lifetime.h"
#include "platform/Log.h"
#include "platform/SerialQueue.h"
#include "platform/linux/HelperBus.h"
#include "platform/linux/desktop/BusThread.h"

namespace corvane {

/// Hot keys of a desktop that gives them out through its portal, as those on Wayland do. Main loop.
///
/// The desktop decides, or its user, what is pressed for them and whether they are had at all. Nothing is
/// refused at once; that they cannot be had is logged, and they are silent. The portal is asked for all keys
/// together, after what the main loop does at the moment: it may ask the user each time.
class PortalHotKeys final : public HotKeyService {
public:
    /// All outlive the service; `bus` is the one that the portal is on.
    PortalHotKeys(BusThread& busThread, SerialQueue& mainLoop, Log& log, HelperBus bus = {"session"});
    ~PortalHotKeys() override;

    [[nodiscard]] std::unique_ptr<HotKeyRegistration> add(
        const HotKey& key, std::function<void(std::uint32_t id)> pressed) override;

private:
    struct Key {
        HotKey hotKey;
        std::function<void(std::uint32_t id)> pressed;
    };
    class Registration;
    class Binder;

    void remove(std::uint64_t number);
    void bindSoon();
    void bind();
    void deliver(std::uint32_t id);

    BusThread& busThread_;
    SerialQueue& mainLoop_;
    std::uint64_t lastNumber_ = 0;
    std::map<std::uint64_t, Key> keys_;
    bool isBindingSoon_ = false;
    /// What the portal was asked for last.
    std::vector<HotKey> bound_;
    Lifetime lifetime_;
    /// Belongs to the bus thread.
    std::shared_ptr<Binder> binder_;
};

}  // namespace corvane
