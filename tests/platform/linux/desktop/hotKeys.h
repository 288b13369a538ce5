#pragma once

#include "platform/HotKeyService.h"

namespace corvane {

// Two hot keys on Super and Alt.
inline const HotKey keepAwake{1, 'k', HotKeyModifier::command + HotKeyModifier::option, "Keep awake"};
inline const HotKey fanBoost{2, 'l', HotKeyModifier::command + HotKeyModifier::option, "Fan boost"};

}  // namespace corvane
