#pragma once

#include <QString>

#include "app/shell/Lang.h"
#include "platform/SerialQueue.h"

namespace corvane {

/// A date and time in short form, in the user's language and the local time zone. Days around the present one
/// go by their names.
struct RelativeDate {
    /// "Tomorrow, 6:15 AM" and "11/23/26, 6:15 AM", or "Morgen, 06:15" and "23.11.26, 06:15". `now` says
    /// which day today is. Blanks are plain ones.
    static QString text(WallTime date, WallTime now, const Lang& lang);
};

}  // namespace corvane
