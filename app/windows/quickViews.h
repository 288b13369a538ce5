#pragma once

#include "app/windows/Views.h"

namespace corvane {

/// The views as they are: drawn by Qt Quick. They are made after the QGuiApplication.
[[nodiscard]] Views quickViews();

}  // namespace corvane
