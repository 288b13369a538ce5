#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QString>
#include <QVariant>

#include "core/CoolingProfile.h"

namespace corvane {

/// Draws the floor that a cooling profile asks for over a range of temperatures, and where the temperature is
/// now. The curve keeps clear of the item's edges, so that line and dot are whole. It is no control.
class CoolingCurveItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT

    /// A profile's raw value; nothing is drawn for any other text.
    Q_PROPERTY(QString kind MEMBER kind_ NOTIFY changed)
    /// °C; undefined when it is not known. Beyond the range it is not marked.
    Q_PROPERTY(QVariant currentTemp MEMBER currentTemp_ NOTIFY changed)
    /// Of the curve.
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY changed)
    /// Of what is written nearby; guide and marker are a fainter one of it.
    Q_PROPERTY(QColor primaryColor MEMBER primaryColor_ NOTIFY changed)
    /// °C at the left and the right edge; nothing is drawn when the right one is not the larger.
    Q_PROPERTY(double tMin MEMBER tMin_ NOTIFY changed)
    Q_PROPERTY(double tMax MEMBER tMax_ NOTIFY changed)

public:
    explicit CoolingCurveItem(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    void drawGuide(QPainter& painter) const;
    void drawCurve(QPainter& painter, CoolingProfile::Kind profile) const;
    void drawMarker(QPainter& painter, CoolingProfile::Kind profile) const;
    [[nodiscard]] QRectF area() const;

    QString kind_;
    QVariant currentTemp_;
    QColor color_ = Qt::black;
    QColor primaryColor_ = Qt::black;
    double tMin_ = 0;
    double tMax_ = 0;
};

}  // namespace corvane
