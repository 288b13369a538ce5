#pragma once

#include <QQuickView>
#include <functional>
#include <utility>

#include "platform/Lifetime.h"
#include "platform/SerialQueue.h"

namespace corvane {

/// A view that tells when the user has closed it. Main loop.
class ClosableView final : public QQuickView {
    Q_OBJECT

public:
    /// `closed` runs on the main loop, outside the view's own calls. The engine and the loop outlive the
    /// view.
    ClosableView(QQmlEngine& engine, SerialQueue& mainLoop, std::function<void()> closed)
        : QQuickView(&engine, nullptr), mainLoop_(mainLoop), closed_(std::move(closed)) {}

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    SerialQueue& mainLoop_;
    std::function<void()> closed_;
    Lifetime lifetime_;
};

}  // namespace corvane
