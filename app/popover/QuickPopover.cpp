#include "app/popover/QuickPopover.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QUrl>
#include <QVariantMap>
#include <chrono>

#include "app/ui/prepareEngine.h"
#include "app/ui/uiFont.h"

namespace corvane {

namespace {

/// A click is over by then, and a second one not yet possible.
constexpr Duration sameClick = std::chrono::milliseconds(300);
/// About the size of a status item, device-independent pixels: trays tell its corner, its middle or the
/// click.
constexpr int samePlace = 48;

}  // namespace

QuickPopover::QuickPopover(const PanelModels& models)
    : models_(models), language_(models.lang), appearance_(models.appearance) {}

QuickPopover::~QuickPopover() = default;

bool QuickPopover::isShown() const {
    return window_ != nullptr && window_->isVisible();
}

void QuickPopover::show(std::optional<QPoint> anchor) {
    if (window_ == nullptr) {
        load();
    }
    if (!isShown()) {
        // The language may have been changed while nobody looked.
        retranslate();
        models_.menu.panelAppeared();
    }
    window_->open(anchor);
}

void QuickPopover::close() {
    if (window_ != nullptr) {
        window_->dismiss();
    }
}

bool QuickPopover::wasClosedByThisClick(std::optional<QPoint> anchor) const {
    if (window_ == nullptr || isShown() || !window_->departure()) {
        return false;
    }
    const auto& [time, pressed] = *window_->departure();
    const bool isSamePlace = !pressed || !anchor || (*pressed - *anchor).manhattanLength() < samePlace;
    return isSamePlace && models_.mainLoop.bootTime() - time < sameClick;
}

void QuickPopover::retranslate() {
    language_.refresh();
    models_.menu.retranslate();
    models_.header.retranslate();
    models_.temperature.retranslate();
}

void QuickPopover::load() {
    QGuiApplication::setFont(uiFont());
    engine_ = std::make_unique<QQmlEngine>();
    prepareEngine(*engine_, language_, appearance_);
    applications_ = std::make_unique<InstalledApplicationsModel>(models_.applications, models_.locale);
    window_ = std::make_unique<PopoverWindow>(*engine_, models_.mainLoop);
    SleepManager& manager = models_.manager;
    window_->setInitialProperties({
        {"manager", QVariant::fromValue(&manager)},
        {"fan", QVariant::fromValue(&manager.fan())},
        {"updates", QVariant::fromValue(&manager.updates())},
        {"triggers", QVariant::fromValue(&manager.triggers())},
        {"lid", QVariant::fromValue(&manager.lid())},
        {"drives", QVariant::fromValue(&manager.drives())},
        {"menu", QVariant::fromValue(&models_.menu)},
        {"header", QVariant::fromValue(&models_.header)},
        {"temperature", QVariant::fromValue(&models_.temperature)},
        {"applications", QVariant::fromValue(applications_.get())},
    });
    window_->setSource(QUrl("qrc:/qt/qml/Corvane/MenuView.qml"));
    QObject::connect(window_.get(), &PopoverWindow::dismissed, &models_.menu, &MenuState::panelDisappeared);
    // The view declares the signal, so it is found by name.
    QObject::connect(window_->rootObject(), SIGNAL(closeRequested()), window_.get(), SLOT(dismiss()));
}

}  // namespace corvane
