#include "app/ui/Symbol.h"

#include "symbols/Symbols.h"

namespace corvane {

Symbol::Symbol(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setImplicitSize(naturalEdge, naturalEdge);
}

void Symbol::setName(const QString& name) {
    if (name_ == name) {
        return;
    }
    name_ = name;
    update();
    Q_EMIT nameChanged();
}

void Symbol::setColor(const QColor& color) {
    if (color_ == color) {
        return;
    }
    color_ = color;
    update();
    Q_EMIT colorChanged();
}

void Symbol::paint(QPainter* painter) {
    drawSymbol(*painter, name_, boundingRect(), color_);
}

}  // namespace corvane
