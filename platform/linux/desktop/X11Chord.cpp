#include "platform/linux/desktop/X11Chord.h"

#include <algorithm>
#include <cstdlib>
#include <memory>

#include <xcb/xcb_keysyms.h>

namespace corvane {

namespace {

// Key symbols as the X protocol numbers them. Those of lower-case Latin letters are their Latin-1 codes.
constexpr xcb_keysym_t numLockSymbol = 0xFF7F;
constexpr xcb_keysym_t altSymbol = 0xFFE9;
constexpr xcb_keysym_t superSymbol = 0xFFEB;

/// Columns of the mapping that are looked through: of layouts and their levels. Few servers fill half of
/// them.
constexpr int columns = 16;

constexpr int modifierCount = 8;
/// Of a state, what is a modifier; the rest is the pointer's buttons and the layout.
constexpr std::uint16_t allModifiers = 0xFF;

struct Release {
    void operator()(xcb_key_symbols_t* symbols) const { xcb_key_symbols_free(symbols); }
    void operator()(xcb_get_modifier_mapping_reply_t* reply) const { std::free(reply); }
};
using KeySymbols = std::unique_ptr<xcb_key_symbols_t, Release>;
using ModifierMapping = std::unique_ptr<xcb_get_modifier_mapping_reply_t, Release>;

/// The keys that bear a symbol in the first column that has it: the layout that counts most.
std::vector<xcb_keycode_t> keycodesOf(const xcb_setup_t& setup, xcb_key_symbols_t& symbols,
                                      xcb_keysym_t symbol) {
    std::vector<xcb_keycode_t> found;
    for (int column = 0; column < columns && found.empty(); ++column) {
        for (int code = setup.min_keycode; code <= setup.max_keycode; ++code) {
            const auto keycode = static_cast<xcb_keycode_t>(code);
            if (xcb_key_symbols_get_keysym(&symbols, keycode, column) == symbol) {
                found.push_back(keycode);
            }
        }
    }
    return found;
}

/// Which modifiers the keys of a symbol are.
std::uint16_t modifiersOf(const xcb_get_modifier_mapping_reply_t& mapping,
                          const std::vector<xcb_keycode_t>& keycodes) {
    const xcb_keycode_t* codes = xcb_get_modifier_mapping_keycodes(&mapping);
    const int perModifier = mapping.keycodes_per_modifier;
    const auto hasOne = [&](int modifier) {
        return std::any_of(codes + modifier * perModifier, codes + (modifier + 1) * perModifier,
                           [&](xcb_keycode_t code) { return std::ranges::count(keycodes, code) > 0; });
    };
    unsigned mask = 0;
    for (int modifier = 0; modifier < modifierCount; ++modifier) {
        mask |= hasOne(modifier) ? 1U << static_cast<unsigned>(modifier) : 0U;
    }
    return static_cast<std::uint16_t>(mask);
}

}  // namespace

bool X11Chord::matches(xcb_keycode_t keycode, std::uint16_t state) const {
    return (state & allModifiers & ~(capsLock | numLock)) == modifiers &&
           std::ranges::count(keycodes, keycode) > 0;
}

std::optional<X11Chord> x11ChordOf(xcb_connection_t& connection, const HotKey& key) {
    const KeySymbols symbols(xcb_key_symbols_alloc(&connection));
    const ModifierMapping mapping(
        xcb_get_modifier_mapping_reply(&connection, xcb_get_modifier_mapping(&connection), nullptr));
    const xcb_setup_t* setup = xcb_get_setup(&connection);
    if (!symbols || !mapping || setup == nullptr) {
        return std::nullopt;
    }
    const auto maskOf = [&](xcb_keysym_t symbol, std::uint16_t customary) {
        const std::uint16_t mask = modifiersOf(*mapping, keycodesOf(*setup, *symbols, symbol));
        return mask != 0 ? mask : customary;
    };
    X11Chord chord;
    chord.keycodes = keycodesOf(*setup, *symbols, static_cast<unsigned char>(key.letter));
    chord.numLock = maskOf(numLockSymbol, 0);
    if ((key.modifiers & HotKeyModifier::command) != 0) {
        chord.modifiers |= maskOf(superSymbol, XCB_MOD_MASK_4);
    }
    if ((key.modifiers & HotKeyModifier::option) != 0) {
        chord.modifiers |= maskOf(altSymbol, XCB_MOD_MASK_1);
    }
    return chord.keycodes.empty() ? std::nullopt : std::optional(std::move(chord));
}

}  // namespace corvane
