#include "app/menu/DurationChoice.h"

namespace corvane {

QList<DurationChoice> DurationChoice::ofSleep() {
    return {{QStringLiteral("1 h"), 3600},
            {QStringLiteral("4 h"), 14400},
            {QStringLiteral("8 h"), 28800},
            {QStringLiteral("12 h"), 43200},
            {QStringLiteral("24 h"), 86400}};
}

QList<DurationChoice> DurationChoice::ofFans() {
    return {{QStringLiteral("1 m"), 60},
            {QStringLiteral("5 m"), 300},
            {QStringLiteral("10 m"), 600},
            {QStringLiteral("30 m"), 1800},
            {QStringLiteral("1 h"), 3600}};
}

}  // namespace corvane
