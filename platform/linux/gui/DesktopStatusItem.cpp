#include "platform/linux/gui/DesktopStatusItem.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <atomic>
#include <string_view>
#include <utility>

namespace corvane {

namespace {

/// KDE's panel has the applications' colours; those of other desktops mostly are dark whatever applications
/// look like.
bool panelFollowsAppearance(const EnvironmentLookup& environment) {
    const char* desktop = environment("XDG_CURRENT_DESKTOP");
    return desktop != nullptr && std::string_view(desktop).find("KDE") != std::string_view::npos;
}

/// Trays tell positions in the pixels of the X screen. Screens begin at the same position in both.
QPoint deviceIndependent(QPoint position) {
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QPoint origin = screen->geometry().topLeft();
        const double scale = screen->devicePixelRatio();
        const QRect native(origin, screen->size() * scale);
        if (native.contains(position)) {
            return origin + (position - origin) / scale;
        }
    }
    return position;
}

/// Whoever may call the item over the bus may tell any number.
QPoint onDesktop(QPoint position) {
    const QRect desktop = QGuiApplication::primaryScreen()->virtualGeometry();
    return {std::clamp(position.x(), desktop.left(), desktop.right()),
            std::clamp(position.y(), desktop.top(), desktop.bottom())};
}

}  // namespace

/// The way of the bus's news to the main loop. Whoever may call the item over the bus may call it as often as
/// they like, so there is a limit to what waits.
class DesktopStatusItem::Arrivals : public std::enable_shared_from_this<Arrivals> {
public:
    /// `follow` runs with each arrival, before it.
    Arrivals(SerialQueue& mainLoop, std::function<void(bool isNotified)> follow)
        : mainLoop_(mainLoop), follow_(std::move(follow)) {}

    /// Bus thread. The last is never lost: whatever waits already brings it along.
    void tellNotified(bool isNotified) {
        isNotified_ = isNotified;
        send([] {});
    }

    /// Bus thread.
    void send(std::function<void()> work) {
        if (underWay_.fetch_add(1) >= maxUnderWay) {
            --underWay_;
            return;
        }
        mainLoop_.async([self = shared_from_this(), work = std::move(work)] {
            --self->underWay_;
            self->follow_(self->isNotified_);
            work();
        });
    }

private:
    SerialQueue& mainLoop_;
    std::function<void(bool isNotified)> follow_;
    std::atomic<bool> isNotified_ = false;
    std::atomic<int> underWay_ = 0;
};

DesktopStatusItem::DesktopStatusItem(BusThread& busThread, SerialQueue& mainLoop, Appearance& appearance,
                                     const EnvironmentLookup& environment, Options options)
    : busThread_(busThread),
      mainLoop_(mainLoop),
      appearance_(appearance),
      options_(std::move(options)),
      panelFollowsAppearance_(panelFollowsAppearance(environment)),
      appearanceObservation_(appearance.observe([this] { changeSoon(); })),
      arrivals_(std::make_shared<Arrivals>(
          mainLoop, lifetime_.bound([this](bool isNotified) { setNotified(isNotified); }))),
      link_(std::make_shared<NotifierLink>(busThread.context(), options_.bus, options_.notifierPatience,
                                           linkEvents())) {
    drawing_.color = color();
    contents_.pixmaps = drawing_.pixmaps();
    busThread_.post([link = link_, contents = std::make_shared<const NotifierContents>(contents_)] {
        link->start(contents);
    });
    waitForNotifier();
}

DesktopStatusItem::~DesktopStatusItem() {
    busThread_.post([link = std::move(link_)] {});
}

NotifierLink::Events DesktopStatusItem::linkEvents() {
    const auto arrivals = arrivals_;
    return {.shown = [arrivals](bool isShown) { arrivals->tellNotified(isShown); },
            .requests = {
                .activate = [arrivals, activate = lifetime_.bound([this](QPoint position) {
                    activate(position);
                })](int x, int y) { arrivals->send([activate, x, y]() mutable { activate(QPoint(x, y)); }); },
                .choose = [arrivals, choose = lifetime_.bound([this](int id) { choose(id); })](
                              int id) { arrivals->send([choose, id]() mutable { choose(id); }); }}};
}

/// The tray may not be destroyed within its events: they go through the main loop's queue.
XTray::Events DesktopStatusItem::trayEvents() {
    return {.clicked =
                [this](QPoint position) {
                    mainLoop_.async(lifetime_.bound([this, position] { activate(position); }));
                },
            .paint =
                [this](QSize size, std::optional<QColor> trayColor) {
                    StatusDrawing drawing = drawing_;
                    drawing.color = trayColor.value_or(drawing.color);
                    return drawing.paint(size);
                }};
}

void DesktopStatusItem::setImage(StatusImage image) {
    assign(drawing_.image, image);
}

void DesktopStatusItem::setTitle(const std::string& title) {
    assign(drawing_.title, QString::fromStdString(title).trimmed());
}

void DesktopStatusItem::setToolTip(const std::string& title, const std::string& text) {
    assign(contents_.toolTipTitle, title);
    assign(contents_.toolTipText, text);
}

void DesktopStatusItem::setMenu(std::vector<StatusMenuEntry> entries) {
    assign(contents_.menu, std::move(entries));
}

void DesktopStatusItem::setHandlers(StatusItemHandlers handlers) {
    handlers_ = std::move(handlers);
}

template <typename Value>
void DesktopStatusItem::assign(Value& shown, Value wanted) {
    if (shown != wanted) {
        shown = std::move(wanted);
        changeSoon();
    }
}

/// What changes together goes out together.
void DesktopStatusItem::changeSoon() {
    if (!std::exchange(isChangeDue_, true)) {
        mainLoop_.async(lifetime_.bound([this] { change(); }));
    }
}

void DesktopStatusItem::change() {
    isChangeDue_ = false;
    StatusDrawing drawing = drawing_;
    drawing.color = color();
    contents_.pixmaps = drawing.pixmaps();
    drawing_ = drawing;
    if (tray_) {
        tray_->repaint();
    }
    busThread_.post([link = link_, contents = std::make_shared<const NotifierContents>(contents_)] {
        link->show(contents);
    });
}

void DesktopStatusItem::activate(QPoint position) {
    StatusItemAnchor anchor;
    if (!position.isNull()) {
        const QPoint place = onDesktop(deviceIndependent(position));
        anchor.point = ScreenPoint{place.x(), place.y()};
    }
    if (const auto activated = handlers_.activated) {
        activated(anchor);
    }
}

/// The menu may have changed since the desktop showed it.
void DesktopStatusItem::choose(int id) {
    const bool isOffered = std::ranges::any_of(contents_.menu, [&](const StatusMenuEntry& entry) {
        return entry.id == id && entry.isEnabled && !entry.isSeparator;
    });
    if (const auto chosen = handlers_.chosen; isOffered && chosen) {
        chosen(id);
    }
}

void DesktopStatusItem::setNotified(bool isNotified) {
    if (std::exchange(isNotified_, isNotified) == isNotified) {
        return;
    }
    if (isNotified) {
        patience_.reset();
        tray_.reset();
    } else {
        waitForNotifier();
    }
}

void DesktopStatusItem::waitForNotifier() {
    if (!options_.display) {
        return;
    }
    patience_ = mainLoop_.after(options_.patience,
                                [this] { tray_ = std::make_unique<XTray>(*options_.display, trayEvents()); });
}

/// White, or nearly black.
QColor DesktopStatusItem::color() const {
    const bool isLight = panelFollowsAppearance_ && !appearance_.isDark();
    return isLight ? QColor(0x23, 0x26, 0x29) : QColor(Qt::white);
}

std::optional<std::string> trayDisplay(const EnvironmentLookup& environment) {
    const char* display = environment("DISPLAY");
    if (display == nullptr || QGuiApplication::platformName() != QLatin1String("xcb")) {
        return std::nullopt;
    }
    return display;
}

}  // namespace corvane
