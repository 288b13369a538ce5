#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include <xcb/xcb.h>

namespace corvane {

/// Frees what the X library allocated.
struct XFree {
    void operator()(void* memory) const { std::free(memory); }
};

template <typename Answer>
using XAnswer = std::unique_ptr<Answer, XFree>;

/// A connection to an X server. One thread.
class XConnection {
public:
    /// Waits for the server. `display` names it as the variable DISPLAY does. Check `isLost` afterwards.
    explicit XConnection(const std::string& display)
        : connection_(xcb_connect(display.c_str(), &screenNumber_)) {}

    /// The connection has ended, or there never was one.
    [[nodiscard]] bool isLost() const { return xcb_connection_has_error(connection_.get()) != 0; }
    [[nodiscard]] xcb_connection_t* get() const { return connection_.get(); }
    [[nodiscard]] int screenNumber() const { return screenNumber_; }

    /// The screen that the display's name asks for. Only while there is a connection.
    [[nodiscard]] const xcb_screen_t& screen() const {
        xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection_.get()));
        for (int i = 0; i < screenNumber_; ++i) {
            xcb_screen_next(&screens);
        }
        return *screens.data;
    }

    /// XCB_ATOM_NONE when the connection is lost.
    [[nodiscard]] xcb_atom_t atom(const std::string& name) const {
        const auto length = static_cast<std::uint16_t>(name.size());
        const auto cookie = xcb_intern_atom(connection_.get(), 0, length, name.c_str());
        const XAnswer<xcb_intern_atom_reply_t> answer(
            xcb_intern_atom_reply(connection_.get(), cookie, nullptr));
        return answer ? answer->atom : xcb_atom_t{XCB_ATOM_NONE};
    }

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    int screenNumber_ = 0;
    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
};

}  // namespace corvane
