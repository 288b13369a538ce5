#pragma once

// What the fakes of AppKit know of each other, beyond what AppKit tells.

#import <AppKit/AppKit.h>

#include "tests/platform/macos/fakes/AppKit/FakeMenuBar.h"
#include "tests/platform/macos/fakes/MainThread.h"
#include "tests/platform/macos/fakes/objc/Complaints.h"

@interface NSEvent ()
@property(readwrite) NSEventType type;
@property(readwrite) NSEventModifierFlags modifierFlags;
@end

@interface NSApplication ()
@property(readwrite, strong) NSEvent* currentEvent;
@end

@interface NSView ()
@property(readwrite, weak) NSWindow* window;
@end

@interface NSControl ()
// As a control does that was clicked or pressed: an event of another kind than the control asked for does
// nothing.
- (void)receiveEvent:(NSEvent*)event;
@end

@interface NSMenuItem ()
@property(readwrite) SEL action;
@property(getter=isSeparatorItem) BOOL separatorItem;
@end

@interface NSMenu ()
@property(readonly) NSArray<NSMenuItem*>* itemArray;
@end

@interface NSImageSymbolConfiguration ()
@property(readwrite) CGFloat pointSize;
@property(readwrite) NSFontWeight weight;
@end

@interface NSImage ()
@property(readwrite, copy) NSString* name;
@property(readwrite, copy) NSString* accessibilityDescription;
@property(readwrite, strong) NSImageSymbolConfiguration* symbolConfiguration;
@end

namespace corvane {

/// Sends an action as controls and menu items do: to a target that is there, which must know the action.
void sendFakeAction(id target, SEL action, id sender);

/// The menu bar and what its user does.
class FakeMenuBar::State {
public:
    /// The one there is, or null.
    static State* current();
    /// The one there is; ends the program when there is none.
    static State& shared();

    State();
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State();

    /// What a menu's user does: the item that is chosen, or nil.
    NSMenuItem* use(NSMenu* menu, NSPoint location);

    std::vector<__unsafe_unretained NSStatusItem*> items;
    Rect itemFrame{1000, 876, 24, 24};
    std::vector<Rect> screens{{0, 0, 1440, 900}};
    std::set<std::string> symbols{"gauge.with.dots.needle.bottom.50percent",
                                  "gauge.with.dots.needle.bottom.100percent", "speedometer"};
    std::function<std::optional<std::string>(const OpenMenu& menu)> menuUse;
    int menusOpened = 0;
};

}  // namespace corvane
