#include "app/ui/ApplicationIcons.h"

#include <QColor>
#include <QFileInfo>
#include <QIcon>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <QRectF>
#include <QUrl>
#include <algorithm>

#include "symbols/Symbols.h"

namespace corvane {

namespace {

// An image file says how large it is; no more than this is believed.
constexpr int largestFileExtent = 2048;

QPixmap readFile(const QString& path, int extent) {
    QImageReader reader(path);
    const QSize size = reader.size();
    if (!QFileInfo(path).isFile() || size.isEmpty() || size.width() > largestFileExtent ||
        size.height() > largestFileExtent) {
        return {};
    }
    reader.setScaledSize(size.scaled(extent, extent, Qt::KeepAspectRatio));
    return QPixmap::fromImage(reader.read());
}

QPixmap iconNamed(const QString& name, int extent) {
    if (name.isEmpty()) {
        return {};
    }
    return name.startsWith('/') ? readFile(name, extent) : QIcon::fromTheme(name).pixmap(extent, extent);
}

QPixmap symbolOfApplication(int extent) {
    QPixmap image(extent, extent);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    // Stands out from a light and from a dark list.
    drawSymbol(painter, QStringLiteral("app.fill"), QRectF(0, 0, extent, extent), QColor(0x80, 0x8a, 0x96));
    return image;
}

}  // namespace

QPixmap ApplicationIcons::requestPixmap(const QString& id, QSize* size, const QSize& requestedSize) {
    const int wanted =
        requestedSize.isEmpty() ? defaultExtent : std::max(requestedSize.width(), requestedSize.height());
    const int extent = std::min(wanted, largestExtent);
    QPixmap icon = iconNamed(QUrl::fromPercentEncoding(id.toUtf8()), extent);
    if (icon.isNull()) {
        icon = symbolOfApplication(extent);
    }
    if (size != nullptr) {
        *size = icon.size();
    }
    return icon;
}

}  // namespace corvane
