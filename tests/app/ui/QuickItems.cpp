#include "tests/app/ui/QuickItems.h"

#include <QCoreApplication>
#include <QImage>
#include <QList>
#include <QStringList>
#include <stdexcept>

namespace corvane {

namespace {

void collect(QQuickItem& root, const QString& name, QList<QQuickItem*>& found) {
    for (QQuickItem* child : root.childItems()) {
        if (child->objectName() == name) {
            found.append(child);
        }
        collect(*child, name, found);
    }
}

QQuickItem* find(QQuickItem& root, const QString& path) {
    QList<QQuickItem*> candidates{&root};
    for (const QString& name : path.split('/')) {
        QList<QQuickItem*> found;
        for (QQuickItem* candidate : candidates) {
            collect(*candidate, name, found);
        }
        candidates = found;
    }
    for (QQuickItem* candidate : candidates) {
        if (candidate->isVisible()) {
            return candidate;
        }
    }
    return candidates.isEmpty() ? nullptr : candidates.front();
}

}  // namespace

QQuickItem& itemAt(QQuickItem& root, const QString& path) {
    QQuickItem* item = find(root, path);
    if (item == nullptr) {
        throw std::runtime_error("no item " + path.toStdString());
    }
    return *item;
}

bool isShownAt(QQuickItem& root, const QString& path) {
    const QQuickItem* item = find(root, path);
    return item != nullptr && item->isVisible();
}

void forEachShown(QQuickItem& root, const std::function<void(QQuickItem&)>& visit) {
    if (!root.isVisible()) {
        return;
    }
    visit(root);
    for (QQuickItem* child : root.childItems()) {
        forEachShown(*child, visit);
    }
}

void renderAll(QQuickWindow& window) {
    QCoreApplication::processEvents();
    // Drawing it is what makes a window lay out its items.
    static_cast<void>(window.grabWindow());
}

}  // namespace corvane
