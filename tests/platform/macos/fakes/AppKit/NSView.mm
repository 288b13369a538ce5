#import "tests/platform/macos/fakes/AppKit/AppKitObjects.h"

using corvane::expectMainThread;
using MenuBarState = corvane::FakeMenuBar::State;

namespace {

NSRect nsRect(const corvane::FakeMenuBar::Rect& rect) {
    return {{rect.x, rect.y}, {rect.width, rect.height}};
}

}  // namespace

@implementation NSWindow

- (NSRect)convertRectToScreen:(NSRect)rect {
    expectMainThread("NSWindow");
    const NSPoint origin = nsRect(MenuBarState::shared().itemFrame).origin;
    return {{rect.origin.x + origin.x, rect.origin.y + origin.y}, rect.size};
}

@end

@implementation NSView

- (NSRect)bounds {
    return {{0, 0}, nsRect(MenuBarState::shared().itemFrame).size};
}

/// Buttons count downwards, windows upwards.
- (NSRect)convertRect:(NSRect)rect toView:(NSView*)view {
    if (view != nil) {
        corvane::objc::complain("the fake has no views within views");
    }
    return {{rect.origin.x, self.bounds.size.height - rect.origin.y - rect.size.height}, rect.size};
}

@end

@implementation NSControl {
    NSEventMask _mask;
}

- (NSInteger)sendActionOn:(NSEventMask)mask {
    const NSEventMask before = _mask;
    _mask = mask;
    return static_cast<NSInteger>(before);
}

- (void)receiveEvent:(NSEvent*)event {
    // Keys and assistive technologies press a button whatever the mouse is asked for.
    const bool isPress = event.type == NSEventTypeKeyDown;
    if (isPress || (_mask & (1ULL << event.type)) != 0) {
        corvane::sendFakeAction(self.target, self.action, self);
    }
}

@end

@implementation NSButton
@end

@implementation NSStatusBarButton
@end

@implementation NSScreen {
    NSRect _frame;
}

+ (NSArray<NSScreen*>*)screens {
    expectMainThread("NSScreen");
    NSMutableArray<NSScreen*>* const screens = [NSMutableArray array];
    for (const auto& frame : MenuBarState::shared().screens) {
        [screens addObject:[[NSScreen alloc] initWithFrame:nsRect(frame)]];
    }
    return screens;
}

- (instancetype)initWithFrame:(NSRect)frame {
    self = [super init];
    if (self) {
        _frame = frame;
    }
    return self;
}

- (NSRect)frame {
    return _frame;
}

@end
