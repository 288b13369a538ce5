#include "app/popover/PopoverWindow.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QQuickItem>
#include <QScreen>
#include <algorithm>
#include <chrono>

#include "app/popover/popoverPosition.h"

namespace corvane {

namespace {

/// The click that opens the panel may still hold the pointer, until its button is let go.
constexpr int mostGrabAttempts = 40;
constexpr Duration grabPause = std::chrono::milliseconds(25);

/// X11 lets a pop-up lie where it is put, by passing its window manager. Elsewhere the compositor decides.
Qt::WindowFlags popupFlags() {
    const bool isX11 = QGuiApplication::platformName() == "xcb";
    return isX11 ? Qt::Popup | Qt::X11BypassWindowManagerHint | Qt::FramelessWindowHint
                 : Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;
}

}  // namespace

PopoverWindow::PopoverWindow(QQmlEngine& engine, SerialQueue& mainLoop)
    : QQuickView(&engine, nullptr), mainLoop_(mainLoop) {
    setFlags(popupFlags());
    setColor(Qt::transparent);
    setResizeMode(QQuickView::SizeRootObjectToView);
    setTitle(QCoreApplication::applicationName());
}

void PopoverWindow::open(std::optional<QPoint> anchor) {
    anchor_ = anchor;
    setScreen(&screenOf(anchor));
    connect(rootObject(), &QQuickItem::implicitHeightChanged, this, &PopoverWindow::place,
            Qt::UniqueConnection);
    place();
    show();
    raise();
    requestActivate();
    Q_EMIT opened();
}

void PopoverWindow::dismiss() {
    if (!isVisible()) {
        return;
    }
    grabTimer_.reset();
    setMouseGrabEnabled(false);
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
        grabAttempts_ = 0;
        grabPointer();
    }
}

/// With the pointer in its hands the window hears of clicks anywhere.
void PopoverWindow::grabPointer() {
    if (!setMouseGrabEnabled(true) && ++grabAttempts_ < mostGrabAttempts) {
        grabTimer_ = mainLoop_.after(grabPause, [this] { grabPointer(); });
    }
}

void PopoverWindow::mousePressEvent(QMouseEvent* event) {
    if (QRect(QPoint(), size()).contains(event->position().toPoint())) {
        QQuickView::mousePressEvent(event);
    } else {
        dismiss();
    }
}

void PopoverWindow::focusOutEvent(QFocusEvent* event) {
    QQuickView::focusOutEvent(event);
    if (isVisible()) {
        leftAt_ = mainLoop_.bootTime();
    }
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
