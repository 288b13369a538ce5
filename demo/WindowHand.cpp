#include "demo/WindowHand.h"

#include <QImage>
#include <QTest>
#include <stdexcept>

#include <fmt/format.h>

namespace corvane {

namespace {

QQuickItem* findBelow(QQuickItem* parent, const QString& name) {
    for (QQuickItem* child : parent->childItems()) {
        if (!child->isVisible()) {
            continue;
        }
        if (child->objectName() == name) {
            return child;
        }
        if (QQuickItem* const found = findBelow(child, name)) {
            return found;
        }
    }
    return nullptr;
}

QPoint middleOf(const QQuickItem& item) {
    return item.mapToScene({item.width() / 2, item.height() / 2}).toPoint();
}

/// What scrolls the item, if anything does.
QQuickItem* scrollerOf(QQuickItem& item) {
    QQuickItem* parent = item.parentItem();
    while (parent != nullptr && !parent->inherits("QQuickFlickable")) {
        parent = parent->parentItem();
    }
    return parent;
}

}  // namespace

QQuickItem* WindowHand::find(std::string_view path) const {
    QQuickItem* item = window_.contentItem();
    for (const QString& name : QString::fromUtf8(path).split('/')) {
        item = item == nullptr ? nullptr : findBelow(item, name);
    }
    return item;
}

QQuickItem& WindowHand::get(std::string_view path) const {
    QQuickItem* const item = find(path);
    if (item == nullptr) {
        throw std::runtime_error(fmt::format("the window shows no {}", path));
    }
    return *item;
}

void WindowHand::reveal(std::string_view path) {
    QQuickItem& item = get(path);
    QQuickItem* const scroller = scrollerOf(item);
    if (scroller == nullptr) {
        return;
    }
    const double top = item.mapToItem(scroller, {0, 0}).y();
    const double below = top + item.height() - scroller->height();
    const double wanted = scroller->property("contentY").toDouble() + (top < 0 ? top : std::max(below, 0.0));
    scroller->setProperty("contentY", wanted);
}

void WindowHand::click(std::string_view path) {
    reveal(path);
    QTest::mouseClick(&window_, Qt::LeftButton, Qt::NoModifier, middleOf(get(path)));
}

void WindowHand::drag(std::string_view path, double part) {
    reveal(path);
    QQuickItem& slider = get(path);
    auto* const handle = slider.property("handle").value<QQuickItem*>();
    const double handleWidth = handle == nullptr ? 0 : handle->width();
    const double way = slider.width() - handleWidth;
    const QPoint target = slider.mapToScene({handleWidth / 2 + way * part, slider.height() / 2}).toPoint();
    const QPoint start = handle == nullptr ? middleOf(slider) : middleOf(*handle);
    QTest::mousePress(&window_, Qt::LeftButton, Qt::NoModifier, start);
    QTest::mouseMove(&window_, (start + target) / 2);
    QTest::mouseMove(&window_, target);
    QTest::mouseRelease(&window_, Qt::LeftButton, Qt::NoModifier, target);
}

void WindowHand::takePicture(const std::string& file) {
    if (!window_.grabWindow().save(QString::fromStdString(file))) {
        throw std::runtime_error(fmt::format("cannot write {}", file));
    }
}

}  // namespace corvane
