// Draws the application's icon for a Mac: makeIcon DRAWING.svg ICON.icns
//
// An icon file is the letters "icns" and its length, then each size as a picture of its own: four letters
// that name the size, the length of the whole entry, and a PNG file. Numbers are big-endian. The names are
// those that macOS's own tools write; a name with a letter of its own stands for half its pixels on a display
// of double density.

#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QtEndian>
#include <array>
#include <cstdio>
#include <cstdlib>

namespace {

struct Size {
    const char* name;
    int pixels;
};

constexpr std::array sizes{Size{"icp4", 16},  Size{"icp5", 32},  Size{"ic11", 32},  Size{"ic12", 64},
                           Size{"ic07", 128}, Size{"ic13", 256}, Size{"ic08", 256}, Size{"ic14", 512},
                           Size{"ic09", 512}, Size{"ic10", 1024}};

QByteArray pngOf(QSvgRenderer& drawing, int pixels) {
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter);
    painter.end();
    QByteArray png;
    QBuffer file(&png);
    file.open(QIODevice::WriteOnly);
    image.save(&file, "PNG");
    return png;
}

QByteArray bigEndian(qsizetype number) {
    QByteArray bytes(sizeof(quint32), '\0');
    qToBigEndian(static_cast<quint32>(number), bytes.data());
    return bytes;
}

QByteArray block(const char* name, const QByteArray& content) {
    constexpr qsizetype headSize = 8;
    return QByteArray(name) + bigEndian(headSize + content.size()) + content;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: makeIcon DRAWING.svg ICON.icns\n", stderr);
        return EXIT_FAILURE;
    }
    QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
    if (!drawing.isValid()) {
        std::fprintf(stderr, "makeIcon: %s is no drawing\n", argv[1]);
        return EXIT_FAILURE;
    }
    QByteArray pictures;
    for (const Size& size : sizes) {
        pictures += block(size.name, pngOf(drawing, size.pixels));
    }
    const QByteArray icon = block("icns", pictures);
    QFile file(QString::fromLocal8Bit(argv[2]));
    if (!file.open(QIODevice::WriteOnly) || file.write(icon) != icon.size()) {
        std::fprintf(stderr, "makeIcon: %s cannot be written\n", argv[2]);
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
