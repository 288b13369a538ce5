#include "tests/platform/macos/fakes/AppKit/FakeMenuBar.h"

#include <algorithm>
#include <utility>

#include "platform/macos/NSStringText.h"
#import "tests/platform/macos/fakes/AppKit/AppKitObjects.h"
#include "tests/platform/macos/fakes/objc/Runtime.h"

@implementation NSEvent
@end

@implementation NSStatusItem {
    NSWindow* _window;
    NSStatusBarButton* _button;
}

- (instancetype)init {
    self = [super init];
    if (self) {
        _window = [[NSWindow alloc] init];
        _button = [[NSStatusBarButton alloc] init];
        _button.window = _window;
        corvane::FakeMenuBar::State::shared().items.push_back(self);
    }
    return self;
}

/// Pools may keep it longer than the menu bar is there.
- (void)dealloc {
    if (corvane::FakeMenuBar::State* const menuBar = corvane::FakeMenuBar::State::current()) {
        std::erase(menuBar->items, self);
    }
}

- (NSStatusBarButton*)button {
    return _button;
}

@end

@implementation NSStatusBar

+ (NSStatusBar*)systemStatusBar {
    corvane::expectMainThread("NSStatusBar");
    return [[NSStatusBar alloc] init];
}

- (NSStatusItem*)statusItemWithLength:(CGFloat)length {
    if (length != NSVariableStatusItemLength) {
        corvane::objc::complain("the fake has items of variable length alone");
    }
    return [[NSStatusItem alloc] init];
}

- (void)removeStatusItem:(NSStatusItem*)item {
    if (std::erase(corvane::FakeMenuBar::State::shared().items, item) != 1U) {
        corvane::objc::complain("not in the menu bar");
    }
}

@end

namespace corvane {

namespace {

FakeMenuBar::State* sharedMenuBarState = nullptr;

FakeMenuBar::Item shownIn(NSStatusBarButton* button) {
    NSImage* const image = button.image;
    const bool isSemibold = image.symbolConfiguration.weight == NSFontWeightSemibold;
    return {.image = textOf(image.name),
            .imageDescription = textOf(image.accessibilityDescription),
            .imageSize = image.symbolConfiguration.pointSize,
            .imageWeight = isSemibold ? "semibold" : "",
            .isTemplate = [image isTemplate],
            .title = textOf(button.title),
            .isTitleShown = button.imagePosition != NSImageOnly,
            .toolTip = textOf(button.toolTip)};
}

FakeMenuBar::MenuLine lineOf(NSMenuItem* item) {
    return {.label = textOf(item.title),
            .isEnabled = item.isEnabled,
            .isChecked = item.state == NSControlStateValueOn,
            .isSeparator = item.isSeparatorItem};
}

void doWithFirstItem(FakeMenuBar::State& state, NSEventType type, NSEventModifierFlags flags = 0) {
    if (state.items.empty()) {
        objc::complain("there is no status item to click on");
        return;
    }
    @autoreleasepool {
        NSEvent* const event = [[NSEvent alloc] init];
        event.type = type;
        event.modifierFlags = flags;
        NSApplication.sharedApplication.currentEvent = event;
        // The item may go meanwhile, but not under AppKit's feet.
        NSStatusItem* const item = state.items.front();
        [item.button receiveEvent:event];
        NSApplication.sharedApplication.currentEvent = nil;
    }
}

}  // namespace

void sendFakeAction(id target, SEL action, id sender) {
    expectMainThread("an action");
    if (target && [target respondsToSelector:action]) {
        const IMP code = class_getMethodImplementation(object_getClass(target), action);
        reinterpret_cast<void (*)(id, SEL, id)>(code)(target, action, sender);
    } else if (target) {
        objc::complain("the target does not know the action");
    }
}

FakeMenuBar::State::State() {
    if (sharedMenuBarState != nullptr) {
        corvane::objc::complain("there is one menu bar");
    }
    sharedMenuBarState = this;
}

FakeMenuBar::State::~State() {
    if (!items.empty()) {
        corvane::objc::complain("a status item is still in the menu bar");
    }
    sharedMenuBarState = nullptr;
}

FakeMenuBar::State* FakeMenuBar::State::current() {
    return sharedMenuBarState;
}

FakeMenuBar::State& FakeMenuBar::State::shared() {
    if (sharedMenuBarState == nullptr) {
        objc::fatal("AppKit is used without a FakeMenuBar");
    }
    return *sharedMenuBarState;
}

NSMenuItem* FakeMenuBar::State::use(NSMenu* menu, NSPoint location) {
    ++menusOpened;
    OpenMenu open{.x = location.x, .y = location.y, .lines = {}};
    for (NSMenuItem* item in menu.itemArray) {
        open.lines.push_back(lineOf(item));
    }
    const auto wanted = menuUse ? menuUse(open) : std::nullopt;
    for (NSMenuItem* item in menu.itemArray) {
        if (wanted == textOf(item.title) && item.isEnabled && !item.isSeparatorItem) {
            return item;
        }
    }
    return nil;
}

FakeMenuBar::FakeMenuBar() : state_(std::make_unique<State>()) {}

FakeMenuBar::~FakeMenuBar() = default;

std::vector<FakeMenuBar::Item> FakeMenuBar::items() const {
    std::vector<Item> shown;
    @autoreleasepool {
        for (NSStatusItem* item : state_->items) {
            shown.push_back(shownIn(item.button));
        }
    }
    return shown;
}

void FakeMenuBar::placeItemsAt(Rect frame) {
    state_->itemFrame = frame;
}

void FakeMenuBar::setScreens(std::vector<Rect> frames) {
    state_->screens = std::move(frames);
}

void FakeMenuBar::setSymbols(std::set<std::string> names) {
    state_->symbols = std::move(names);
}

void FakeMenuBar::click() {
    doWithFirstItem(*state_, NSEventTypeLeftMouseUp);
}

void FakeMenuBar::rightClick() {
    doWithFirstItem(*state_, NSEventTypeRightMouseUp);
}

void FakeMenuBar::controlClick() {
    doWithFirstItem(*state_, NSEventTypeLeftMouseUp, NSEventModifierFlagControl);
}

void FakeMenuBar::press() {
    doWithFirstItem(*state_, NSEventTypeKeyDown);
}

void FakeMenuBar::setMenuUse(std::function<std::optional<std::string>(const OpenMenu& menu)> use) {
    state_->menuUse = std::move(use);
}

int FakeMenuBar::menusOpened() const {
    return state_->menusOpened;
}

}  // namespace corvane
