#include "app/popover/PopoverWindow.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QQuickItem>
#include <QScreen>
#include <algorithm>
#include <chrono>
#include <utility>

#include "app/popover/popoverPosition.h"

namespace corvane {

namespace {

/// The click that opens the panel may still hold the pointer, until its button is let go.
constexpr int mostGrabAttempts = 40;
constexpr Duration grabPause = std::chrono::milliseconds(25);

bool isOnX11() {
    return QGuiApplication::platformName() == "xcb";
}

bool isInWaylandSession() {
    return qEnvironmentVariable("XDG_SESSION_TYPE") == "wayland" ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

/// X11 lets a window lie where it is put, past its window manager. Not so where the X server is a
/// compositor's guest: that one takes the keyboard back at once from a window that it does not manage.
/// Elsewhere the compositor decides. Not Qt's kind of pop-up: it keeps those from assistive technologies.
Qt::WindowFlags popoverFlags() {
    const Qt::WindowFlags flags = Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;
    return isOnX11() && !isInWaylandSession() ? flags | Qt::X11BypassWindowManagerHint : flags;
}

/// Menus and the like, which only hold what the user has not chosen yet. A question stays: it was asked for
/// good, and waits for its answer until the panel is open again.
bool isForTheMoment(const QObject& popup) {
    return popup.inherits("QQuickPopup") && !popup.inherits("QQuickDialog");
}

/// What lies over the views, in the one item that Qt Quick keeps for it. Each item belongs to the pop-up that
/// it shows.
void closePopups(const QQuickItem& content) {
    for (const QQuickItem* layer : content.childItems()) {
        if (!layer->inherits("QQuickOverlay")) {
            continue;
        }
        for (const QQuickItem* item : layer->childItems()) {
            if (QObject* const popup = item->parent(); popup != nullptr && isForTheMoment(*popup)) {
                QMetaObject::invokeMethod(popup, "close");
            }
        }
    }
}

}  // namespace

PopoverWindow::PopoverWindow(QQmlEngine& engine, SerialQueue& mainLoop)
    : QQuickView(&engine, nullptr), mainLoop_(mainLoop) {
    setFlags(popoverFlags());
    // Qt's Cocoa plugin hides tool windows, which would still count as shown, while the application is not
    // the active one.
    setProperty("_q_macAlwaysShowToolWindow", true);
    setColor(Qt::transparent);
    setResizeMode(QQuickView::SizeRootObjectToView);
    setTitle(QCoreApplication::applicationName());
}

void PopoverWindow::open(std::optional<QPoint> anchor) {
    isOpen_ = true;
    anchor_ = anchor;
    QCoreApplication::instance()->installEventFilter(this);
    setScreen(&screenOf(anchor));
    connect(rootObject(), &QQuickItem::implicitHeightChanged, this, &PopoverWindow::place,
            Qt::UniqueConnection);
    place();
    show();
    raise();
    requestActivate();
}

void PopoverWindow::dismiss() {
    if (!std::exchange(isOpen_, false)) {
        return;
    }
    QCoreApplication::instance()->removeEventFilter(this);
    grabTimer_.reset();
    if (isOnX11()) {
        setMouseGrabEnabled(false);
    }
    closePopups(*contentItem());
    hide();
    Q_EMIT dismissed();
}

/// As large as its content wants to be and the screen has room for.
void PopoverWindow::place() {
    const QRect available = screen()->availableGeometry();
    const int room = available.height() - 2 * popoverMargin;
    rootObject()->setProperty("availableHeight", room);
    const QSize size(qCeil(rootObject()->implicitWidth()),
                     std::min(room, qCeil(rootObject()->implicitHeight())));
    setGeometry(QRect(popoverPosition(size, anchor_, available), size));
}

QScreen& PopoverWindow::screenOf(std::optional<QPoint> anchor) const {
    QScreen* const found = anchor ? QGuiApplication::screenAt(*anchor) : nullptr;
    return found == nullptr ? *QGuiApplication::primaryScreen() : *found;
}

void PopoverWindow::exposeEvent(QExposeEvent* event) {
    QQuickView::exposeEvent(event);
    if (isExposed() && !grabTimer_) {
        // A window manager puts new windows where it likes, but many of them let one go elsewhere then.
        place();
        grabAttempts_ = 0;
        grabPointer();
    }
}

/// With the pointer in its hands the window hears of clicks anywhere. Only X servers give it to such windows.
void PopoverWindow::grabPointer() {
    if (isOnX11() && !setMouseGrabEnabled(true) && ++grabAttempts_ < mostGrabAttempts) {
        grabTimer_ = mainLoop_.after(grabPause, [this] { grabPointer(); });
    }
}

/// Before Qt Quick sees it: a modal pop-up keeps every press to itself, also one outside the window.
bool PopoverWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched != this || event->type() != QEvent::MouseButtonPress) {
        return QQuickView::eventFilter(watched, event);
    }
    const auto& press = *static_cast<const QMouseEvent*>(event);
    if (QRect(QPoint(), size()).contains(press.position().toPoint())) {
        return false;
    }
    depart(press.globalPosition().toPoint());
    return true;
}

void PopoverWindow::focusOutEvent(QFocusEvent* event) {
    QQuickView::focusOutEvent(event);
    // It loses the keyboard when it is dismissed, too.
    if (isOpen_) {
        depart(std::nullopt);
    }
}

void PopoverWindow::depart(std::optional<QPoint> pressed) {
    departure_ = {mainLoop_.bootTime(), pressed};
    dismiss();
}

void PopoverWindow::keyPressEvent(QKeyEvent* event) {
    QQuickView::keyPressEvent(event);
    if (event->key() == Qt::Key_Escape && !event->isAccepted()) {
        dismiss();
    }
}

bool PopoverWindow::event(QEvent* event) {
    if (event->type() == QEvent::Close) {
        // The window manager's wish; the panel is closed, never destroyed.
        dismiss();
        return true;
    }
    return QQuickView::event(event);
}

}  // namespace corvane
