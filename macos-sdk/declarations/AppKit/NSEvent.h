#pragma once
#import <Foundation/Foundation.h>

// AppKit's public documentation; the values are those of its reference pages.
typedef NS_ENUM(NSUInteger, NSEventType) {
    NSEventTypeLeftMouseUp = 2,
    NSEventTypeRightMouseUp = 4,
    NSEventTypeKeyDown = 10,
};

// A bit for each type, at the place of its number.
typedef NS_OPTIONS(unsigned long long, NSEventMask) {
    NSEventMaskLeftMouseUp = 1ULL << NSEventTypeLeftMouseUp,
    NSEventMaskRightMouseUp = 1ULL << NSEventTypeRightMouseUp,
};

typedef NS_OPTIONS(NSUInteger, NSEventModifierFlags) {
    NSEventModifierFlagControl = 1UL << 18,
};

// AppKit's public documentation.
@interface NSEvent : NSObject
@property(readonly) NSEventType type;
@property(readonly) NSEventModifierFlags modifierFlags;
@end
