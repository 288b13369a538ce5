#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <xcb/xcb.h>

#include "platform/HotKeyService.h"

namespace corvane {

/// A hot key as an X server knows it: some of its keys, with modifiers held down.
struct X11Chord {
    /// The keys that bear the letter; at least one.
    std::vector<xcb_keycode_t> keycodes;
    /// Masks of modifiers: those that are held down, and those of CapsLock and NumLock, which do not matter.
    std::uint16_t modifiers = 0;
    std::uint16_t capsLock = XCB_MOD_MASK_LOCK;
    std::uint16_t numLock = 0;

    /// Whether a key event with this key and this state is about the chord.
    [[nodiscard]] bool matches(xcb_keycode_t keycode, std::uint16_t state) const;

    bool operator==(const X11Chord&) const = default;
};

/// Looks a hot key up in the server's keyboard mapping; waits for the server. None when no key bears the
/// letter, as on a keyboard of another script, and when the connection is dead.
[[nodiscard]] std::optional<X11Chord> x11ChordOf(xcb_connection_t& connection, const HotKey& key);

}  // namespace corvane
