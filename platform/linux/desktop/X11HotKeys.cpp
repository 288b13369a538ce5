#include "platform/linux/desktop/X11HotKeys.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <fmt/format.h>

namespace corvane {

namespace {

/// With each of the locks that do not matter.
std::array<std::uint16_t, 4> modifierVariantsOf(const X11Chord& chord) {
    std::array<std::uint16_t, 4> variants{};
    std::ranges::transform(
        std::array<int, 4>{0, chord.capsLock, chord.numLock, chord.capsLock | chord.numLock},
        variants.begin(), [&](int locks) { return static_cast<std::uint16_t>(chord.modifiers | locks); });
    return variants;
}

/// Runs `work` with each window, key and set of modifiers that a chord is grabbed as.
template <typename Work>
void forEachGrab(xcb_connection_t& connection, const X11Chord& chord, const Work& work) {
    for (auto screen = xcb_setup_roots_iterator(xcb_get_setup(&connection)); screen.rem > 0;
         xcb_screen_next(&screen)) {
        for (const xcb_keycode_t keycode : chord.keycodes) {
            for (const std::uint16_t modifiers : modifierVariantsOf(chord)) {
                work(screen.data->root, keycode, modifiers);
            }
        }
    }
}

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
using Event = std::unique_ptr<xcb_generic_event_t, Free>;
using Error = std::unique_ptr<xcb_generic_error_t, Free>;

std::string nameOf(const HotKey& key) {
    return fmt::format("{}{}{}", (key.modifiers & HotKeyModifier::command) != 0 ? "Super+" : "",
                       (key.modifiers & HotKeyModifier::option) != 0 ? "Alt+" : "",
                       static_cast<char>(std::toupper(static_cast<unsigned char>(key.letter))));
}

}  // namespace

class X11HotKeys::Registration final : public HotKeyRegistration {
public:
    Registration(X11HotKeys& keys, std::uint64_t number) : keys_(keys), number_(number) {}
    ~Registration() override { keys_.remove(number_); }

private:
    X11HotKeys& keys_;
    std::uint64_t number_;
};

X11HotKeys::X11HotKeys(SerialQueue& mainLoop, Log& log, const std::string& display)
    : mainLoop_(mainLoop),
      log_(log),
      connection_(xcb_connect(display.empty() ? nullptr : display.c_str(), nullptr)) {
    if (xcb_connection_has_error(connection_.get()) != 0) {
        connection_.reset();
        return;
    }
    // The connection closes its own.
    const int descriptor = fcntl(xcb_get_file_descriptor(connection_.get()), F_DUPFD_CLOEXEC, 0);
    if (descriptor < 0) {
        connection_.reset();
        return;
    }
    watch_ = std::make_unique<QtDescriptor>(descriptor, [this] { readEvents(); });
}

X11HotKeys::~X11HotKeys() = default;

std::unique_ptr<HotKeyRegistration> X11HotKeys::add(const HotKey& key,
                                                    std::function<void(std::uint32_t id)> pressed) {
    Key wanted{.hotKey = key, .pressed = std::move(pressed)};
    if (connection_) {
        wanted.chord = x11ChordOf(*connection_, key);
    }
    if (!isConnected()) {
        log_.write(fmt::format("No hot key {}: there is no X server.", nameOf(key)));
        return nullptr;
    }
    grab(wanted);
    // Events that came in while the server was waited for make the descriptor readable no more.
    mainLoop_.async(lifetime_.bound([this] { readEvents(); }));
    if (!wanted.isOurs) {
        return nullptr;
    }
    keys_.emplace(++lastNumber_, std::move(wanted));
    return std::make_unique<Registration>(*this, lastNumber_);
}

/// As far as is known: a server's end shows when something is asked of it.
bool X11HotKeys::isConnected() const {
    return connection_ && xcb_connection_has_error(connection_.get()) == 0;
}

/// Takes the key, or tells the log why it cannot be had.
void X11HotKeys::grab(Key& key) {
    key.isOurs = key.chord && grabAll(*key.chord);
    if (!key.chord) {
        log_.write(
            fmt::format("No hot key {}: no key on the keyboard bears the letter.", nameOf(key.hotKey)));
    } else if (!key.isOurs) {
        log_.write(fmt::format("No hot key {}: another application has it.", nameOf(key.hotKey)));
        ungrabAll(*key.chord);
    }
}

void X11HotKeys::ungrab(Key& key) {
    if (std::exchange(key.isOurs, false) && connection_) {
        ungrabAll(*key.chord);
    }
}

bool X11HotKeys::grabAll(const X11Chord& chord) {
    constexpr std::uint8_t forUsAlone = 0;
    std::vector<xcb_void_cookie_t> requests;
    forEachGrab(
        *connection_, chord, [&](xcb_window_t window, xcb_keycode_t keycode, std::uint16_t modifiers) {
            requests.push_back(xcb_grab_key_checked(connection_.get(), forUsAlone, window, modifiers, keycode,
                                                    XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
        });
    // Each answer is fetched, whatever the others are: unfetched ones would come as events.
    return std::ranges::count_if(requests, [this](xcb_void_cookie_t request) {
               return Error(xcb_request_check(connection_.get(), request)) != nullptr;
           }) == 0;
}

/// Also what was not grabbed: the server does not mind, nor does it touch what others have.
void X11HotKeys::ungrabAll(const X11Chord& chord) {
    forEachGrab(*connection_, chord,
                [this](xcb_window_t window, xcb_keycode_t keycode, std::uint16_t modifiers) {
                    xcb_ungrab_key(connection_.get(), keycode, window, modifiers);
                });
    xcb_flush(connection_.get());
}

void X11HotKeys::remove(std::uint64_t number) {
    const Keys::iterator found = keys_.find(number);
    ungrab(found->second);
    keys_.erase(found);
}

void X11HotKeys::readEvents() {
    while (connection_) {
        const Event event(xcb_poll_for_event(connection_.get()));
        if (!event) {
            break;
        }
        // What other clients send in the server's name has a further bit set, and is none of these.
        switch (event->response_type) {
            case XCB_KEY_PRESS:
                press(reinterpret_cast<const xcb_key_press_event_t&>(*event));
                break;
            case XCB_KEY_RELEASE:
                release(reinterpret_cast<const xcb_key_release_event_t&>(*event));
                break;
            case XCB_MAPPING_NOTIFY:
                adaptToMapping();
                break;
            default:
                break;
        }
    }
    if (connection_ && !isConnected()) {
        lose();
    }
}

/// The server repeats a key that is held down by letting go of it and pressing it in the same millisecond,
/// which no hand can.
void X11HotKeys::press(const xcb_key_press_event_t& event) {
    const auto found = std::ranges::find_if(keys_, [&](const auto& known) {
        return known.second.isOurs && known.second.chord->matches(event.detail, event.state);
    });
    if (found != keys_.end() && found->second.released != event.time) {
        found->second.pressed(found->second.hotKey.id);
    }
}

void X11HotKeys::release(const xcb_key_release_event_t& event) {
    for (auto& [number, key] : keys_) {
        if (key.isOurs && std::ranges::count(key.chord->keycodes, event.detail) > 0) {
            key.released = event.time;
        }
    }
}

/// Servers tell of each keyboard that is plugged in and often enough of none: what stays as it was is not
/// touched.
void X11HotKeys::adaptToMapping() {
    std::vector<Key*> changed;
    for (auto& [number, key] : keys_) {
        std::optional<X11Chord> chord = x11ChordOf(*connection_, key.hotKey);
        if (chord != key.chord) {
            ungrab(key);
            key.chord = std::move(chord);
            changed.push_back(&key);
        }
    }
    if (!isConnected()) {
        return;
    }
    // Only now: one may have moved to where another was.
    for (Key* key : changed) {
        grab(*key);
    }
}

void X11HotKeys::lose() {
    connection_.reset();
    // It is the descriptor that calls.
    mainLoop_.async(lifetime_.bound([this] { watch_.reset(); }));
}

}  // namespace corvane
