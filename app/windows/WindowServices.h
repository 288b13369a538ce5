#pragma once

#include "app/shell/Lang.h"
#include "platform/Appearance.h"
#include "platform/SerialQueue.h"

namespace corvane {

/// What any window needs. All of it outlives the window.
struct WindowServices {
    SerialQueue& mainLoop;
    Appearance& appearance;
    const Lang& lang;
};

}  // namespace corvane
