#pragma once

#include <CoreFoundation/CFCGTypes.h>
#include <CoreGraphics/CGDirectDisplay.h>
#include <CoreGraphics/CGError.h>
