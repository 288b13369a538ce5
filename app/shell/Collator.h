#pragma once

#include <QCollator>

#include "platform/Locale.h"

namespace corvane {

/// The order in which names are listed for the user: that of their language, upper and lower case alike.
[[nodiscard]] QCollator userCollator(const Locale& locale);

}  // namespace corvane
