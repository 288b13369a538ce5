#pragma once

#include <QQuickView>
#include <utility>

#include "app/shell/AppWindow.h"
#include "platform/Lifetime.h"
#include "platform/SerialQueue.h"

namespace corvane {

/// A view that tells when the user has closed it. Main loop.
class ClosableView final : public QQuickView {
    Q_OBJECT

public:
    /// The engine and the loop outlive the view.
    ClosableView(QQmlEngine& engine, SerialQueue& mainLoop, WindowClosed closed)
        : QQuickView(&engine, nullptr), mainLoop_(mainLoop), closed_(std::move(closed)) {}

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    SerialQueue& mainLoop_;
    WindowClosed closed_;
    Lifetime lifetime_;
};

}  // namespace corvane
