#include "platform/linux/gui/XTray.h"

#include <QPainter>
#include <array>
#include <utility>

#include <fmt/format.h>

namespace corvane {

namespace {

// The numbers are those of the System Tray and XEmbed protocols.
constexpr std::uint32_t requestDock = 0;
constexpr std::uint32_t embedVersion = 0;
constexpr std::uint32_t embedMapped = 1;

// Window managers' hints of a window's size: numbers of which the first says which are there.
constexpr std::size_t sizeHints = 18;
constexpr std::uint32_t hasLeastSize = 1U << 4U;
constexpr std::size_t leastWidth = 5;
constexpr std::size_t leastHeight = 6;

constexpr std::uint8_t alphaDepth = 32;
/// In pixels, until the tray has said which; and at least.
constexpr std::uint16_t leastEdge = 22;
/// In pixels. No tray is larger, and no image of this size too large for one request.
constexpr int largestEdge = 200;

template <typename Event>
const Event& as(const xcb_generic_event_t& event) {
    // All events share this beginning.
    return reinterpret_cast<const Event&>(event);
}

}  // namespace

XTray::XTray(const std::string& display, Events events) : events_(std::move(events)), x_(display) {
    if (x_.isLost()) {
        return;
    }
    root_ = x_.screen().root;
    selection_ = x_.atom(fmt::format("_NET_SYSTEM_TRAY_S{}", x_.screenNumber()));
    newManager_ = x_.atom("MANAGER");
    // New trays announce themselves there.
    const std::uint32_t structure = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(x_.get(), root_, XCB_CW_EVENT_MASK, &structure);
    readable_ = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(x_.get()), QSocketNotifier::Read);
    QObject::connect(readable_.get(), &QSocketNotifier::activated, readable_.get(), [this] { takeEvents(); });
    findTray();
    takeEvents();
}

/// Also after each answer that was waited for: what arrived before it lies in the library and does not make
/// the descriptor readable.
void XTray::takeEvents() {
    while (const XAnswer<xcb_generic_event_t> event{xcb_poll_for_event(x_.get())}) {
        take(*event);
    }
    xcb_flush(x_.get());
    if (x_.isLost()) {
        lose();
    }
}

void XTray::take(const xcb_generic_event_t& event) {
    // The uppermost bit tells that another client has sent it.
    switch (event.response_type & 0x7f) {
        case XCB_CLIENT_MESSAGE:
            takeMessage(as<xcb_client_message_event_t>(event));
            break;
        case XCB_DESTROY_NOTIFY:
            if (as<xcb_destroy_notify_event_t>(event).window == manager_) {
                leave();
                findTray();
            }
            break;
        case XCB_REPARENT_NOTIFY:
            takeReparenting(as<xcb_reparent_notify_event_t>(event));
            break;
        case XCB_CONFIGURE_NOTIFY: {
            const auto& configured = as<xcb_configure_notify_event_t>(event);
            if (configured.window == window_) {
                resize({configured.width, configured.height});
            }
            break;
        }
        case XCB_EXPOSE:
            paint();
            break;
        case XCB_BUTTON_RELEASE: {
            const auto& button = as<xcb_button_release_event_t>(event);
            if (button.detail <= XCB_BUTTON_INDEX_3) {
                events_.clicked({button.root_x, button.root_y});
            }
            break;
        }
        default:
            break;
    }
}

void XTray::takeMessage(const xcb_client_message_event_t& message) {
    if (message.window == root_ && message.type == newManager_ && message.format == 32 &&
        message.data.data32[1] == selection_) {
        findTray();
    }
}

/// A tray that goes, or does not want the window any more, leaves it to the root.
void XTray::takeReparenting(const xcb_reparent_notify_event_t& event) {
    if (event.window == window_) {
        isDocked_ = event.parent != root_;
    }
}

void XTray::resize(QSize size) {
    size_ = size;
    paint();
}

void XTray::findTray() {
    // The tray must not go between being found and being watched.
    xcb_grab_server(x_.get());
    const XAnswer<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(x_.get(), xcb_get_selection_owner(x_.get(), selection_), nullptr));
    const xcb_window_t found = owner ? owner->owner : xcb_window_t{XCB_WINDOW_NONE};
    const bool isOther = found != manager_;
    if (isOther && found != XCB_WINDOW_NONE) {
        const std::uint32_t structure = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(x_.get(), found, XCB_CW_EVENT_MASK, &structure);
    }
    xcb_ungrab_server(x_.get());
    if (isOther) {
        leave();
        manager_ = found;
        dock();
    }
}

void XTray::dock() {
    if (manager_ == XCB_WINDOW_NONE) {
        return;
    }
    visual_ = visual();
    createWindow();
    describeWindow();
    askToDock();
}

void XTray::leave() {
    if (window_ != XCB_WINDOW_NONE) {
        xcb_destroy_window(x_.get(), window_);
    }
    window_ = XCB_WINDOW_NONE;
    manager_ = XCB_WINDOW_NONE;
    isDocked_ = false;
}

/// The X server has gone.
void XTray::lose() {
    readable_->setEnabled(false);
    window_ = XCB_WINDOW_NONE;
    manager_ = XCB_WINDOW_NONE;
    isDocked_ = false;
}

std::vector<std::uint32_t> XTray::numbersOfTray(xcb_atom_t property, xcb_atom_t type) const {
    constexpr std::uint32_t mostNumbers = 16;
    const auto cookie = xcb_get_property(x_.get(), 0, manager_, property, type, 0, mostNumbers);
    const XAnswer<xcb_get_property_reply_t> answer(xcb_get_property_reply(x_.get(), cookie, nullptr));
    if (!answer || answer->type != type || answer->format != 32) {
        return {};
    }
    const auto* numbers = static_cast<const std::uint32_t*>(xcb_get_property_value(answer.get()));
    return {numbers, numbers + answer->value_len};
}

/// The tray's wish, if that lets its background shine through.
XTray::Visual XTray::visual() const {
    const auto wished = numbersOfTray(x_.atom("_NET_SYSTEM_TRAY_VISUAL"), XCB_ATOM_VISUALID);
    const xcb_screen_t& screen = x_.screen();
    auto depths = xcb_screen_allowed_depths_iterator(&screen);
    for (; !wished.empty() && depths.rem > 0; xcb_depth_next(&depths)) {
        auto visuals = xcb_depth_visuals_iterator(depths.data);
        for (; visuals.rem > 0; xcb_visualtype_next(&visuals)) {
            if (visuals.data->visual_id == wished.front() && depths.data->depth == alphaDepth) {
                return {wished.front(), alphaDepth};
            }
        }
    }
    return {screen.root_visual, screen.root_depth};
}

void XTray::createWindow() {
    xcb_colormap_t colormap = x_.screen().default_colormap;
    if (visual_.id != x_.screen().root_visual) {
        colormap = xcb_generate_id(x_.get());
        xcb_create_colormap(x_.get(), XCB_COLORMAP_ALLOC_NONE, colormap, root_, visual_.id);
    }
    const std::uint32_t mask = XCB_CW_BACK_PIXMAP | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP;
    // A tray without such a visual shines through by being the background.
    const std::uint32_t background =
        visual_.depth == alphaDepth ? XCB_BACK_PIXMAP_NONE : XCB_BACK_PIXMAP_PARENT_RELATIVE;
    const std::array<std::uint32_t, 4> values{background, 0,
                                              XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY |
                                                  XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE,
                                              colormap};
    window_ = xcb_generate_id(x_.get());
    xcb_create_window(x_.get(), visual_.depth, window_, root_, 0, 0, leastEdge, leastEdge, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, visual_.id, mask, values.data());
    size_ = {leastEdge, leastEdge};
}

void XTray::describeWindow() {
    const auto describe = [this](const char* name, xcb_atom_t type, const std::string& text) {
        xcb_change_property(x_.get(), XCB_PROP_MODE_REPLACE, window_, x_.atom(name), type, 8,
                            static_cast<std::uint32_t>(text.size()), text.data());
    };
    describe("WM_CLASS", XCB_ATOM_STRING, std::string("corvane\0Corvane\0", 16));
    describe("_NET_WM_NAME", x_.atom("UTF8_STRING"), "Corvane");
    const xcb_atom_t info = x_.atom("_XEMBED_INFO");
    const std::array<std::uint32_t, 2> embedding{embedVersion, embedMapped};
    xcb_change_property(x_.get(), XCB_PROP_MODE_REPLACE, window_, info, info, 32, embedding.size(),
                        embedding.data());
    // Trays leave out what does not say that it is larger than a point.
    std::array<std::uint32_t, sizeHints> hints{hasLeastSize};
    hints[leastWidth] = leastEdge;
    hints[leastHeight] = leastEdge;
    xcb_change_property(x_.get(), XCB_PROP_MODE_REPLACE, window_, XCB_ATOM_WM_NORMAL_HINTS,
                        XCB_ATOM_WM_SIZE_HINTS, 32, hints.size(), hints.data());
}

void XTray::askToDock() {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = manager_;
    message.type = x_.atom("_NET_SYSTEM_TRAY_OPCODE");
    message.data.data32[0] = XCB_CURRENT_TIME;
    message.data.data32[1] = requestDock;
    message.data.data32[2] = window_;
    xcb_send_event(x_.get(), 0, manager_, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&message));
}

/// The first three numbers: red, green and blue of ordinary texts, of 65535 each.
std::optional<QColor> XTray::textColor() const {
    const auto colors = numbersOfTray(x_.atom("_NET_SYSTEM_TRAY_COLORS"), XCB_ATOM_CARDINAL);
    if (colors.size() < 3) {
        return std::nullopt;
    }
    const auto part = [&](std::size_t index) { return static_cast<int>(colors[index] >> 8U) & 0xff; };
    return QColor(part(0), part(1), part(2));
}

/// What shines through the window: nothing yet where the server mixes it in, else the tray.
QImage XTray::background() const {
    QImage canvas(size_, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    if (visual_.depth == alphaDepth) {
        return canvas;
    }
    const auto width = static_cast<std::uint16_t>(size_.width());
    const auto height = static_cast<std::uint16_t>(size_.height());
    xcb_clear_area(x_.get(), 0, window_, 0, 0, width, height);
    const auto cookie = xcb_get_image(x_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, window_, 0, 0, width, height, ~0U);
    const XAnswer<xcb_get_image_reply_t> answer(xcb_get_image_reply(x_.get(), cookie, nullptr));
    if (answer && xcb_get_image_data_length(answer.get()) == canvas.sizeInBytes()) {
        const QImage tray(xcb_get_image_data(answer.get()), size_.width(), size_.height(),
                          QImage::Format_RGB32);
        QPainter(&canvas).drawImage(0, 0, tray);
    }
    return canvas;
}

void XTray::repaint() {
    if (isDocked_) {
        paint();
        takeEvents();
    }
}

void XTray::paint() {
    if (!isDocked_ || size_.isEmpty() || size_.width() > largestEdge || size_.height() > largestEdge) {
        return;
    }
    QImage canvas = background();
    QPainter(&canvas).drawImage(0, 0, events_.paint(size_, textColor()));
    const xcb_gcontext_t context = xcb_generate_id(x_.get());
    xcb_create_gc(x_.get(), context, window_, 0, nullptr);
    xcb_put_image(x_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, window_, context,
                  static_cast<std::uint16_t>(canvas.width()), static_cast<std::uint16_t>(canvas.height()), 0,
                  0, 0, visual_.depth, static_cast<std::uint32_t>(canvas.sizeInBytes()), canvas.constBits());
    xcb_free_gc(x_.get(), context);
    xcb_flush(x_.get());
}

}  // namespace corvane
