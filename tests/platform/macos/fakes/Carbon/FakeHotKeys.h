#pragma once

#include <list>
#include <set>
#include <utility>
#include <vector>

#include <Carbon/Carbon.h>

#include "tests/platform/macos/fakes/Current.h"

namespace corvane {

/// A Mac's keyboard, as Carbon's event manager hands its hot keys to this application. One at a time, main
/// thread. At its end the test fails if a key or a handler is left.
class FakeHotKeys {
public:
    struct Registered {
        UInt32 keyCode;
        UInt32 modifiers;
        OSType signature;
        UInt32 id;

        bool operator==(const Registered&) const = default;
    };

    FakeHotKeys() = default;
    FakeHotKeys(const FakeHotKeys&) = delete;
    FakeHotKeys& operator=(const FakeHotKeys&) = delete;
    ~FakeHotKeys();

    /// Presses a key and lets go of it. False when nobody here has it or no handler wanted it.
    bool press(UInt32 keyCode, UInt32 modifiers);
    /// Tells the handlers of a key that nobody has registered. False when none wanted it.
    bool pressUnknown(UInt32 id);
    /// Hands the handlers an event that does not say which key it was, and returns what came of it.
    OSStatus sendWithoutId();

    /// Another application has the key from now on.
    void take(UInt32 keyCode, UInt32 modifiers) { taken_.emplace(keyCode, modifiers); }
    /// From now on no handler can be installed.
    void refuseHandlers() { refusesHandlers_ = true; }

    /// In the order they were registered.
    [[nodiscard]] std::vector<Registered> registered() const;
    [[nodiscard]] std::size_t handlers() const { return handlers_.size(); }

    // For Carbon's functions.
    struct Handler {
        EventHandlerUPP function;
        void* userData;
    };
    /// Null when it is refused.
    Handler* install(Handler handler);
    bool remove(const void* handler);
    OSStatus add(const Registered& key, EventHotKeyRef& reference);
    bool removeKey(const void* key);

private:
    OSStatus dispatch(const EventHotKeyID* id);

    bool refusesHandlers_ = false;
    std::set<std::pair<UInt32, UInt32>> taken_;
    // Their addresses name them.
    std::list<Registered> keys_;
    std::list<Handler> handlers_;
    Current<FakeHotKeys> current_{*this};
};

}  // namespace corvane
