#pragma once
#import <CoreFoundation/CFCGTypes.h>
#import <Foundation/NSObjCRuntime.h>

// Foundation's public documentation: the names of Core Graphics' types on 64-bit systems.
typedef CGPoint NSPoint;
typedef CGSize NSSize;
typedef CGRect NSRect;

// Foundation's public documentation: functions of the header, no symbols.
static inline CGFloat NSMidX(NSRect rect) {
    return rect.origin.x + rect.size.width * 0.5;
}
static inline CGFloat NSMinY(NSRect rect) {
    return rect.origin.y;
}
static inline CGFloat NSHeight(NSRect rect) {
    return rect.size.height;
}
