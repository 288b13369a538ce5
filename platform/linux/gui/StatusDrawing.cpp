#include "platform/linux/gui/StatusDrawing.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QtEndian>
#include <algorithm>

#include "symbols/Symbols.h"

namespace corvane {

namespace {

/// Of letters, with what reaches above and below them, to the drawing's edge.
constexpr double titleHeight = 0.56;
/// What digits take of their letters' height.
constexpr double digitHeight = 0.73;

QString symbolName(StatusImage image) {
    return image == StatusImage::gauge100 ? QStringLiteral("gauge.with.dots.needle.bottom.100percent")
                                          : QStringLiteral("gauge.with.dots.needle.bottom.50percent");
}

QFont letters(double height) {
    QFont font;
    font.setPixelSize(std::max(1, qRound(height)));
    font.setWeight(QFont::DemiBold);
    return font;
}

/// Draws the title at the bottom of the box, as wide as that at most; returns how much is left above it, in
/// pixels.
double drawTitle(QPainter& painter, const QString& title, const QRectF& box) {
    const double wanted = box.height() * titleHeight;
    const double width = QFontMetricsF(letters(wanted)).horizontalAdvance(title);
    const QFont font = letters(std::min(wanted, wanted * box.width() / width));
    painter.setFont(font);
    const double left = box.center().x() - QFontMetricsF(font).horizontalAdvance(title) / 2;
    painter.drawText(QPointF(left, box.bottom()), title);
    return box.height() - font.pixelSize() * digitHeight;
}

NotifierPixmap toPixmap(const QImage& image) {
    const QImage straight = image.convertToFormat(QImage::Format_ARGB32);
    NotifierPixmap pixmap{straight.width(), straight.height(), {}};
    pixmap.argb.resize(static_cast<std::size_t>(straight.sizeInBytes()));
    // Lines of whole pixels of four bytes have nothing between them.
    qToBigEndian<quint32>(straight.constBits(), straight.sizeInBytes() / 4, pixmap.argb.data());
    return pixmap;
}

}  // namespace

QImage StatusDrawing::paint(QSize size) const {
    QImage canvas(size, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.setPen(color);
    const int edge = std::min(size.width(), size.height());
    const QPoint corner((size.width() - edge) / 2, (size.height() - edge) / 2);
    const QRectF box(corner, QSizeF(edge, edge));
    const double left = title.isEmpty() ? edge : drawTitle(painter, title, box) - 1;
    drawSymbol(painter, symbolName(image), QRectF(box.topLeft(), QSizeF(edge, left)), color);
    return canvas;
}

std::vector<NotifierPixmap> StatusDrawing::pixmaps() const {
    std::vector<NotifierPixmap> pixmaps;
    for (const int edge : {16, 22, 24, 32, 48}) {
        pixmaps.push_back(toPixmap(paint({edge, edge})));
    }
    return pixmaps;
}

}  // namespace corvane
