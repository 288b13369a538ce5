#include "app/ui/CalendarMonth.h"

#include <QTime>

namespace corvane {

namespace {

constexpr int daysInWeek = 7;

QDate firstOfMonth(QDate day) {
    return {day.year(), day.month(), 1};
}

}  // namespace

CalendarMonth::CalendarMonth(QObject* parent)
    : QObject(parent), selected_(QDate(2000, 1, 1).startOfDay()), firstDay_(selected_.date()) {}

QLocale CalendarMonth::locale() const {
    return isGerman_ ? QLocale(QLocale::German, QLocale::Germany)
                     : QLocale(QLocale::English, QLocale::UnitedStates);
}

QString CalendarMonth::title() const {
    return locale().toString(firstDay_, QStringLiteral("MMMM yyyy"));
}

QStringList CalendarMonth::weekdays() const {
    const QLocale names = locale();
    QStringList weekdays;
    for (int column = 0; column < daysInWeek; ++column) {
        const int day = (names.firstDayOfWeek() - 1 + column) % daysInWeek + 1;
        weekdays.append(names.standaloneDayName(day, QLocale::ShortFormat));
    }
    return weekdays;
}

QStringList CalendarMonth::days() const {
    const QLocale names = locale();
    QStringList days;
    for (QDate day = firstDay_; isShown(day); day = day.addDays(1)) {
        days.append(names.toString(day, QLocale::LongFormat));
    }
    return days;
}

int CalendarMonth::leadingDays() const {
    return (firstDay_.dayOfWeek() - locale().firstDayOfWeek() + daysInWeek) % daysInWeek;
}

int CalendarMonth::selectedDay() const {
    return isShown(selected_.date()) ? selected_.date().day() : 0;
}

bool CalendarMonth::isShown(QDate day) const {
    return firstOfMonth(day) == firstDay_;
}

void CalendarMonth::setGerman(bool isGerman) {
    if (isGerman_ != isGerman) {
        isGerman_ = isGerman;
        Q_EMIT changed();
    }
}

void CalendarMonth::setSelected(const QDateTime& time) {
    if (time.isValid() && selected_ != time) {
        selected_ = time.toLocalTime();
        firstDay_ = firstOfMonth(selected_.date());
        Q_EMIT changed();
    }
}

void CalendarMonth::showLater(int months) {
    const QDate day = firstDay_.addMonths(months);
    if (day.isValid() && day != firstDay_) {
        firstDay_ = day;
        Q_EMIT changed();
    }
}

QDateTime CalendarMonth::onDay(int day) const {
    return {firstDay_.addDays(day - 1), selected_.time()};
}

QDateTime CalendarMonth::later(int days, int months) const {
    return selected_.addMonths(months).addDays(days);
}

QDateTime CalendarMonth::atTime(int hour, int minute) const {
    return {selected_.date(), QTime(hour, minute)};
}

}  // namespace corvane
