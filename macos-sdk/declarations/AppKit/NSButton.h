#pragma once
#import <AppKit/NSControl.h>
#import <AppKit/NSImage.h>

// AppKit's public documentation; the values are those of its reference pages.
typedef NS_ENUM(NSUInteger, NSCellImagePosition) {
    NSImageOnly = 1,
    NSImageLeading = 7,
};

// AppKit's public documentation.
@interface NSButton : NSControl
@property(copy) NSString* title;
@property(strong) NSImage* image;
@property NSCellImagePosition imagePosition;
@end
