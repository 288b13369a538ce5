#include "app/windows/ClosableView.h"

#include <QKeyEvent>

namespace corvane {

void ClosableView::closeEvent(QCloseEvent* event) {
    QQuickView::closeEvent(event);
    mainLoop_.async(lifetime_.bound(closed_));
}

void ClosableView::keyPressEvent(QKeyEvent* event) {
    QQuickView::keyPressEvent(event);
    if (!event->isAccepted() && event->matches(QKeySequence::Close)) {
        close();
    }
}

}  // namespace corvane
