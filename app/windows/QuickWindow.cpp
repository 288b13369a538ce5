#include "app/windows/QuickWindow.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QScreen>
#include <QUrl>
#include <utility>

#include "app/ui/prepareEngine.h"
#include "app/ui/uiFont.h"
#include "app/windows/ClosableView.h"

namespace corvane {

namespace {

Qt::WindowFlags flagsOf(QuickWindow::Frame frame) {
    if (frame == QuickWindow::Frame::none) {
        return Qt::Window | Qt::FramelessWindowHint;
    }
    return Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
           Qt::WindowCloseButtonHint;
}

QRect centred(QSize size, const QRect& available) {
    QRect place(QPoint(), size);
    place.moveCenter(available.center());
    return place;
}

QUrl sourceOf(const QString& view) {
    return QUrl(QStringLiteral("qrc:/qt/qml/Corvane/%1.qml").arg(view));
}

}  // namespace

QuickWindow::QuickWindow(const WindowServices& services, const Content& content, WindowClosed closed)
    : language_(services.lang), appearance_(services.appearance) {
    QGuiApplication::setFont(uiFont());
    prepareEngine(engine_, language_, appearance_);
    view_ = std::make_unique<ClosableView>(engine_, services.mainLoop, std::move(closed));
    view_->setFlags(flagsOf(content.frame));
    view_->setTitle(content.title);
    view_->setResizeMode(QQuickView::SizeRootObjectToView);
    view_->setMinimumSize(content.size);
    view_->setMaximumSize(content.size);
    view_->setGeometry(centred(content.size, view_->screen()->availableGeometry()));
    view_->setInitialProperties(content.properties);
    view_->setSource(sourceOf(content.view));
    const QObject* const root = view_->rootObject();
    if (root != nullptr && root->metaObject()->indexOfSignal("closeRequested()") >= 0) {
        QObject::connect(root, SIGNAL(closeRequested()), view_.get(), SLOT(close()));
    }
}

QuickWindow::~QuickWindow() = default;

void QuickWindow::bringToFront() {
    view_->show();
    view_->raise();
    view_->requestActivate();
}

}  // namespace corvane
