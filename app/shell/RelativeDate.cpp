#include "app/shell/RelativeDate.h"

#include <QLocale>

#include "app/shell/LocalTime.h"

namespace corvane {

namespace {

/// Null for a day without a name. `days` counts from today.
const char* dayName(qint64 days, const Lang& lang) {
    switch (days) {
        case -1:
            return lang.text("Gestern", "Yesterday");
        case 0:
            return lang.text("Heute", "Today");
        case 1:
            return lang.text("Morgen", "Tomorrow");
        case 2:
            return lang.text("Übermorgen", nullptr);
        default:
            return nullptr;
    }
}

/// Newer tables of forms have narrow and no-break blanks between the time and AM or PM.
QString withPlainBlanks(QString text) {
    return text.replace(QChar(0x202F), u' ').replace(QChar::Nbsp, u' ');
}

}  // namespace

QString RelativeDate::text(WallTime date, WallTime now, const Lang& lang) {
    const QDateTime local = localTime(date);
    const QLocale form(lang.text("de_DE", "en_US"));
    const char* name = dayName(localTime(now).date().daysTo(local.date()), lang);
    const QString day =
        name == nullptr ? form.toString(local.date(), QLocale::ShortFormat) : QString::fromUtf8(name);
    const QString time = form.toString(local.time(), QLocale::ShortFormat);
    return withPlainBlanks(QStringLiteral("%1, %2").arg(day, time));
}

}  // namespace corvane
