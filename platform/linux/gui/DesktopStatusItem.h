#pragma once

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QSize>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Appearance.h"
#include "platform/Lifetime.h"
#include "platform/SerialQueue.h"
#include "platform/StatusItem.h"
#include "platform/linux/HelperBus.h"
#include "platform/linux/desktop/BusThread.h"
#include "platform/linux/desktop/EnvironmentLookup.h"
#include "platform/linux/gui/NotifierLink.h"
#include "platform/linux/gui/StatusDrawing.h"
#include "platform/linux/gui/XTray.h"

namespace corvane {

/// A status item of the freedesktop kind, with a menu that the desktop shows; where the desktop has no place
/// for such items, a window in the X server's tray, which opens by any button and has neither menu nor tool
/// tip. Main loop.
///
/// Desktops start in any order: the tray is taken when nobody has shown the item for `patience`, and left as
/// soon as somebody does.
class DesktopStatusItem final : public StatusItem {
public:
    struct Options {
        HelperBus bus = {"session"};
        NotifierPatience notifierPatience = {};
        Duration patience = std::chrono::seconds(2);
        /// Names the X server as the variable DISPLAY does; none for no tray of that kind.
        std::optional<std::string> display;
    };

    /// Clicks and choices under way to the main loop at most; further ones are dropped.
    static constexpr int maxUnderWay = 16;

    /// Made after the QGuiApplication. All that is handed over outlives it. `appearance` is what panels
    /// follow that follow the applications; others are taken to be dark.
    DesktopStatusItem(BusThread& busThread, SerialQueue& mainLoop, Appearance& appearance,
                      const EnvironmentLookup& environment, Options options);
    ~DesktopStatusItem() override;

    void setImage(StatusImage image) override;
    void setTitle(const std::string& title) override;
    void setToolTip(const std::string& title, const std::string& text) override;
    void setMenu(std::vector<StatusMenuEntry> entries) override;
    void setHandlers(StatusItemHandlers handlers) override;

private:
    class Arrivals;

    [[nodiscard]] NotifierLink::Events linkEvents();
    [[nodiscard]] XTray::Events trayEvents();
    /// Takes over what differs.
    template <typename Value>
    void assign(Value& shown, Value wanted);
    void changeSoon();
    void change();
    void activate(QPoint position);
    void choose(int id);
    void setNotified(bool isNotified);
    void waitForNotifier();
    [[nodiscard]] QColor color() const;

    BusThread& busThread_;
    SerialQueue& mainLoop_;
    Appearance& appearance_;
    Options options_;
    bool panelFollowsAppearance_;

    StatusDrawing drawing_;
    NotifierContents contents_;
    StatusItemHandlers handlers_;
    bool isChangeDue_ = false;
    bool isNotified_ = false;
    std::unique_ptr<Observation> appearanceObservation_;
    std::unique_ptr<Timer> patience_;
    std::unique_ptr<XTray> tray_;
    Lifetime lifetime_;
    std::shared_ptr<Arrivals> arrivals_;
    /// Belongs to the bus thread.
    std::shared_ptr<NotifierLink> link_;
};

/// The X server that a tray is looked for on: the one that this application's own windows are on, if any.
/// After the QGuiApplication was made.
[[nodiscard]] std::optional<std::string> trayDisplay(const EnvironmentLookup& environment);

}  // namespace corvane
