#pragma once

#import <AppKit/AppKit.h>

#include "platform/StatusItem.h"

namespace corvane {

/// The system's own drawing of an image, which the menu bar colours for its background; "speedometer" on a
/// system that lacks it, and nil on one that lacks that, too.
NSImage* statusSymbol(StatusImage image);

}  // namespace corvane
