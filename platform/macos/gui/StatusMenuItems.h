#pragma once

#include <vector>

#import <AppKit/AppKit.h>

#include "platform/StatusItem.h"
#import "platform/macos/gui/ActionTarget.h"

namespace corvane {

/// A menu of `entries`. The items' tags are the entries' identifiers; `target` learns which one is chosen and
/// is kept by the caller for as long as the menu can be open.
NSMenu* makeStatusMenu(const std::vector<StatusMenuEntry>& entries, CorvaneActionTarget* target);

}  // namespace corvane
