#pragma once

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QSize>
#include <QSocketNotifier>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/gui/XConnection.h"

namespace corvane {

/// A window of the application's own in the tray of an X server, by the System Tray and XEmbed protocols. It
/// goes into whichever tray there is, and into the next one when that has gone. Main loop.
///
/// Over a connection of its own, whose server it waits for; without an X server there never is a tray.
class XTray {
public:
    /// All are there. None may destroy the tray.
    struct Events {
        /// With any of three buttons, at this position of the X screen, in its own pixels.
        std::function<void(QPoint position)> clicked;
        /// What to show in this size, in pixels: an image of the same size, premultiplied ARGB. `color` is
        /// that of the tray's own texts, where it says so.
        std::function<QImage(QSize size, std::optional<QColor> color)> paint;
    };

    /// `display` names the X server as the variable DISPLAY does.
    XTray(const std::string& display, Events events);
    XTray(const XTray&) = delete;
    XTray& operator=(const XTray&) = delete;
    ~XTray() = default;

    /// Paints anew, and handles the events that come meanwhile.
    void repaint();

private:
    struct Visual {
        xcb_visualid_t id;
        std::uint8_t depth;
    };

    void takeEvents();
    void take(const xcb_generic_event_t& event);
    void takeReparenting(const xcb_reparent_notify_event_t& event);
    void takeMessage(const xcb_client_message_event_t& message);
    void resize(QSize size);
    void paint();
    void findTray();
    void dock();
    void leave();
    void lose();

    void createWindow();
    void describeWindow();
    void askToDock();
    [[nodiscard]] std::vector<std::uint32_t> numbersOfTray(xcb_atom_t property, xcb_atom_t type) const;
    [[nodiscard]] Visual visual() const;
    [[nodiscard]] std::optional<QColor> textColor() const;
    [[nodiscard]] QImage background() const;

    Events events_;
    XConnection x_;
    xcb_window_t root_ = XCB_WINDOW_NONE;
    xcb_atom_t selection_ = XCB_ATOM_NONE;
    xcb_atom_t newManager_ = XCB_ATOM_NONE;
    /// The tray's window.
    xcb_window_t manager_ = XCB_WINDOW_NONE;
    /// The application's.
    xcb_window_t window_ = XCB_WINDOW_NONE;
    /// Both of the application's window.
    Visual visual_{};
    QSize size_;
    bool isDocked_ = false;
    std::unique_ptr<QSocketNotifier> readable_;
};

}  // namespace corvane
