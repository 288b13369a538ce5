#include "app/shell/Collator.h"

#include <QLocale>
#include <string>
#include <vector>

namespace corvane {

QCollator userCollator(const Locale& locale) {
    const std::vector<std::string> preferred = locale.preferredLanguages();
    const QLocale language(preferred.empty() ? QString() : QString::fromStdString(preferred.front()));
    // "C" stands for a language that Qt does not know, too; it has an order of bytes only.
    QCollator collator(language.language() == QLocale::C ? QLocale(QLocale::English) : language);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return collator;
}

}  // namespace corvane
