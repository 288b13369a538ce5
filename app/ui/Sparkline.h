#pragma once

#include <QColor>
#include <QList>
#include <QQuickPaintedItem>

namespace corvane {

/// Draws a short history of values. It is no control.
class Sparkline : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT

    /// Finite, oldest first; nothing is drawn for fewer than two.
    Q_PROPERTY(QList<double> values MEMBER values_ NOTIFY changed)
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY changed)

public:
    explicit Sparkline(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    QList<double> values_;
    QColor color_ = Qt::black;
};

}  // namespace corvane
