#pragma once

#include <QFont>

namespace corvane {

/// The typeface of the views, for `QGuiApplication::setFont`: Inter where it is installed, else the
/// desktop's, with pictures in colour among the letters. Needs the application object; main thread.
[[nodiscard]] QFont uiFont();

}  // namespace corvane
