#include "symbols/Symbols.h"

#include <QFile>
#include <QImage>
#include <QSvgRenderer>
#include <QTransform>
#include <algorithm>
#include <cmath>

// The resources of a static library are registered by hand, and outside of any namespace.
static void registerResources() {
    Q_INIT_RESOURCE(symbols);
}

namespace corvane {

namespace {

/// A symbol of more pixels than this each way is scaled up from them.
constexpr int largestEdge = 4096;

QString resourceOf(const QString& name) {
    static const bool registered = (registerResources(), true);
    Q_UNUSED(registered)
    return QStringLiteral(":/corvane/symbols/%1.svg").arg(name);
}

QRectF largestSquareIn(const QRectF& box) {
    const double edge = std::min(box.width(), box.height());
    QRectF square(0, 0, edge, edge);
    square.moveCenter(box.center());
    return square;
}

/// Device pixels along an edge of `length` in the painter's coordinates.
int devicePixels(const QPainter& painter, double length) {
    const QTransform& transform = painter.deviceTransform();
    const double scale = std::hypot(transform.m11(), transform.m12());
    return std::clamp(static_cast<int>(std::lround(length * scale)), 1, largestEdge);
}

/// The drawings are black, and white where something is cut out of the black. What is black, and only that,
/// becomes `color`.
void tint(QImage& drawing, const QColor& color) {
    for (int y = 0; y < drawing.height(); ++y) {
        auto* const line = reinterpret_cast<QRgb*>(drawing.scanLine(y));
        std::transform(line, line + drawing.width(), line, [&color](QRgb pixel) {
            const int ink = (qAlpha(pixel) - qRed(pixel)) * color.alpha() / 255;
            return qPremultiply(qRgba(color.red(), color.green(), color.blue(), std::max(ink, 0)));
        });
    }
}

}  // namespace

bool hasSymbol(const QString& name) {
    return QFile::exists(resourceOf(name));
}

void drawSymbol(QPainter& painter, const QString& name, const QRectF& box, const QColor& color) {
    if (box.isEmpty() || !hasSymbol(name)) {
        return;
    }
    const QRectF square = largestSquareIn(box);
    const int edge = devicePixels(painter, square.width());
    QImage drawing(edge, edge, QImage::Format_ARGB32_Premultiplied);
    drawing.fill(Qt::transparent);
    QPainter drawingPainter(&drawing);
    QSvgRenderer(resourceOf(name)).render(&drawingPainter, QRectF(0, 0, edge, edge));
    drawingPainter.end();
    tint(drawing, color);
    painter.drawImage(square, drawing);
}

}  // namespace corvane
