#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include <xcb/xcb.h>

#include "platform/HotKeyService.h"
#include "platform/Lifetime.h"
#include "platform/Log.h"
#include "platform/SerialQueue.h"
#include "platform/linux/desktop/QtDescriptor.h"
#include "platform/linux/desktop/X11Chord.h"

namespace corvane {

/// Hot keys of an X server: keys that it keeps from everybody else. Whether CapsLock and NumLock are on does
/// not matter. Command is Super and Option is Alt there. Main loop, on Qt's event loop.
///
/// It has a connection of its own, so that its events and errors are nobody else's. When the server goes
/// away the keys are silent.
class X11HotKeys final : public HotKeyService {
public:
    /// Connects, and waits for the server; without one every key is refused. Both outlive the service.
    /// `display` is a server's name, as in $DISPLAY, which an empty one stands for.
    X11HotKeys(SerialQueue& mainLoop, Log& log, const std::string& display = {});
    ~X11HotKeys() override;

    /// Waits for the server. A refusal is logged.
    [[nodiscard]] std::unique_ptr<HotKeyRegistration> add(
        const HotKey& key, std::function<void(std::uint32_t id)> pressed) override;

private:
    struct Key {
        HotKey hotKey;
        std::function<void(std::uint32_t id)> pressed;
        /// As the keyboard is now; none when no key of it bears the letter.
        std::optional<X11Chord> chord = {};
        /// It is not another application's.
        bool isOurs = false;
        /// When it was let go of, in the server's time.
        std::optional<xcb_timestamp_t> released = {};
    };
    using Keys = std::map<std::uint64_t, Key>;
    class Registration;
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    [[nodiscard]] bool isConnected() const;
    void grab(Key& key);
    [[nodiscard]] bool grabAll(const X11Chord& chord);
    void ungrab(Key& key);
    void ungrabAll(const X11Chord& chord);
    void remove(std::uint64_t number);
    void readEvents();
    void press(const xcb_key_press_event_t& event);
    void release(const xcb_key_release_event_t& event);
    void adaptToMapping();
    void lose();

    SerialQueue& mainLoop_;
    Log& log_;
    std::uint64_t lastNumber_ = 0;
    Keys keys_;
    Lifetime lifetime_;
    /// Null without a server.
    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    std::unique_ptr<QtDescriptor> watch_;
};

}  // namespace corvane
