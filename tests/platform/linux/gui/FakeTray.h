#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/linux/gui/XConnection.h"
#include "tests/support/Notes.h"

namespace corvane {

/// A tray on an X server: owns the selection and takes the windows that ask for it. One thread, which calls
/// `work`.
class FakeTray {
public:
    /// `edge`: what the windows are resized to, in pixels.
    explicit FakeTray(const std::string& display, std::uint16_t edge = 30) : x_(display), edge_(edge) {
        const std::uint32_t values[] = {0x202020, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY};
        window_ = xcb_generate_id(x_.get());
        xcb_create_window(x_.get(), XCB_COPY_FROM_PARENT, window_, x_.screen().root, 100, 50, 200, 40, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
        xcb_map_window(x_.get(), window_);
        flush();
    }

    /// The colour of its texts, 65535 at most each.
    void setTextColor(std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
        const std::array<std::uint32_t, 3> color{red, green, blue};
        xcb_change_property(x_.get(), XCB_PROP_MODE_REPLACE, window_, x_.atom("_NET_SYSTEM_TRAY_COLORS"),
                            XCB_ATOM_CARDINAL, 32, color.size(), color.data());
    }

    /// Becomes the tray and says so to everybody.
    void open() {
        const xcb_atom_t selection = x_.atom("_NET_SYSTEM_TRAY_S0");
        xcb_set_selection_owner(x_.get(), window_, selection, XCB_CURRENT_TIME);
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = x_.screen().root;
        message.type = x_.atom("MANAGER");
        message.data.data32[1] = selection;
        message.data.data32[2] = window_;
        xcb_send_event(x_.get(), 0, message.window, XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                       reinterpret_cast<const char*>(&message));
        flush();
    }

    /// Ends as a tray that quits does: it leaves its windows to the root.
    void close() {
        letGo();
        xcb_destroy_window(x_.get(), window_);
        flush();
    }

    /// Puts the window out.
    void letGo() {
        if (client_ != XCB_WINDOW_NONE) {
            xcb_reparent_window(x_.get(), client_, x_.screen().root, 0, 0);
            flush();
        }
    }

    /// Takes what has arrived.
    void work() {
        while (const XAnswer<xcb_generic_event_t> event{xcb_poll_for_event(x_.get())}) {
            const int type = event->response_type & 0x7f;
            if (type == XCB_CLIENT_MESSAGE) {
                embed(reinterpret_cast<const xcb_client_message_event_t&>(*event).data.data32[2]);
            } else if (type == XCB_DESTROY_NOTIFY &&
                       reinterpret_cast<const xcb_destroy_notify_event_t&>(*event).window == client_) {
                client_ = XCB_WINDOW_NONE;
            }
        }
        flush();
    }

    /// The window that it has taken; 0 for none.
    [[nodiscard]] xcb_window_t client() const { return client_; }
    [[nodiscard]] int taken() const { return taken_; }

    /// Sends a click into the middle of the window, at this position of the screen.
    void click(std::uint8_t button, std::int16_t x, std::int16_t y) {
        xcb_button_release_event_t click{};
        click.response_type = XCB_BUTTON_RELEASE;
        click.detail = button;
        click.root = x_.screen().root;
        click.event = client_;
        click.root_x = x;
        click.root_y = y;
        xcb_send_event(x_.get(), 0, client_, XCB_EVENT_MASK_BUTTON_RELEASE,
                       reinterpret_cast<const char*>(&click));
        flush();
    }

    /// Leaves nothing of what its client has painted.
    void wipe() {
        xcb_clear_area(x_.get(), 0, client_, 0, 0, 0, 0);
        flush();
    }

    /// How many pixels of the tray have this colour, 0xRRGGBB.
    [[nodiscard]] int count(std::uint32_t color) const {
        const auto cookie =
            xcb_get_image(x_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, window_, 0, 0, edge_, edge_, ~0U);
        const XAnswer<xcb_get_image_reply_t> image(xcb_get_image_reply(x_.get(), cookie, nullptr));
        if (!image) {
            return -1;
        }
        std::vector<std::uint32_t> pixels(std::size_t{edge_} * edge_);
        std::memcpy(pixels.data(), xcb_get_image_data(image.get()), pixels.size() * sizeof(std::uint32_t));
        int found = 0;
        for (const std::uint32_t pixel : pixels) {
            found += (pixel & 0xffffffU) == color ? 1 : 0;
        }
        return found;
    }

    /// The least width that the window says it has, in pixels; 0 when it does not say.
    [[nodiscard]] std::uint32_t leastWidth() const {
        constexpr std::uint32_t index = 5;
        const auto cookie = xcb_get_property(x_.get(), 0, client_, XCB_ATOM_WM_NORMAL_HINTS,
                                             XCB_ATOM_WM_SIZE_HINTS, index, 1);
        const XAnswer<xcb_get_property_reply_t> hint(xcb_get_property_reply(x_.get(), cookie, nullptr));
        return hint && hint->value_len == 1
                   ? *static_cast<const std::uint32_t*>(xcb_get_property_value(hint.get()))
                   : 0;
    }

private:
    void embed(xcb_window_t client) {
        client_ = client;
        ++taken_;
        xcb_reparent_window(x_.get(), client, window_, 0, 0);
        const std::uint32_t size[] = {edge_, edge_};
        xcb_configure_window(x_.get(), client, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size);
        xcb_map_window(x_.get(), client);
    }

    void flush() { xcb_flush(x_.get()); }

    XConnection x_;
    std::uint16_t edge_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
    xcb_window_t client_ = XCB_WINDOW_NONE;
    int taken_ = 0;
};

}  // namespace corvane
