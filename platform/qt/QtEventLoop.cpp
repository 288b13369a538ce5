#include "platform/qt/QtEventLoop.h"

#include <QCoreApplication>

namespace corvane {

int QtEventLoop::run() {
    // An exit that came before the loop ran would be forgotten by Qt.
    return status_ ? *status_ : QCoreApplication::exec();
}

void QtEventLoop::exit(int status) {
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [this, status] {
            if (!status_) {
                status_ = status;
                QCoreApplication::exit(status);
            }
        },
        Qt::QueuedConnection);
}

}  // namespace corvane
