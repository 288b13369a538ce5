#include "app/ui/uiFont.h"

#include <QFontDatabase>
#include <QGuiApplication>

namespace corvane {

QFont uiFont() {
    QFont font = QGuiApplication::font();
    const auto typeface = QStringLiteral("Inter");
    const QString family = QFontDatabase::hasFamily(typeface) ? typeface : font.family();
    font.setFamilies({family, QStringLiteral("Noto Color Emoji")});
    return font;
}

}  // namespace corvane
