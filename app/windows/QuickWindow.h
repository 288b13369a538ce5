#pragma once

#include <QQmlEngine>
#include <QQuickView>
#include <QSize>
#include <QString>
#include <QVariantMap>
#include <functional>
#include <memory>

#include "app/shell/AppWindow.h"
#include "app/ui/AppearanceState.h"
#include "app/ui/LanguageState.h"
#include "app/windows/WindowServices.h"

namespace corvane {

/// A window of one fixed size that shows a view of the module `Corvane`. Its engine goes with it, so that a
/// window that was closed leaves nothing in memory. Made after the QGuiApplication; main loop.
class QuickWindow final : public AppWindow {
public:
    enum class Frame {
        /// The desktop draws a title bar with a button that closes the window.
        titleBar,
        /// The view fills the whole window: it closes and moves it by itself.
        none,
    };

    struct Content {
        /// The name of a view, such as "MenuView". A signal `closeRequested` of it closes the window.
        QString view;
        QString title;
        /// Device-independent pixels.
        QSize size;
        /// What the view requires. Objects among them outlive the window.
        QVariantMap properties;
        Frame frame = Frame::titleBar;
    };

    /// Makes it in the middle of the screen; it shows with `bringToFront`.
    QuickWindow(const WindowServices& services, const Content& content, WindowClosed closed);
    ~QuickWindow() override;

    void bringToFront() override;

    /// For whoever looks at what is shown.
    [[nodiscard]] QQuickView& view() { return *view_; }
    /// What the texts of the window follow.
    [[nodiscard]] LanguageState& language() { return language_; }

private:
    LanguageState language_;
    AppearanceState appearance_;
    QQmlEngine engine_;
    std::unique_ptr<QQuickView> view_;
};

}  // namespace corvane
