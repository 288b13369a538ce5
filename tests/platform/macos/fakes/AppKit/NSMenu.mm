#import "tests/platform/macos/fakes/AppKit/AppKitObjects.h"

using corvane::expectMainThread;

@implementation NSMenuItem

+ (NSMenuItem*)separatorItem {
    NSMenuItem* const item = [[NSMenuItem alloc] initWithTitle:@"" action:nullptr keyEquivalent:@""];
    item.separatorItem = YES;
    return item;
}

- (instancetype)initWithTitle:(NSString*)title action:(SEL)action keyEquivalent:(NSString*)keyEquivalent {
    self = [super init];
    if (self) {
        if (!(title != nil && keyEquivalent != nil)) {
            corvane::objc::complain("AppKit raises an exception");
        }
        _title = [title copy];
        _action = action;
        _enabled = YES;
    }
    return self;
}

@end

@implementation NSMenu {
    NSMutableArray<NSMenuItem*>* _items;
}

- (instancetype)init {
    self = [super init];
    if (self) {
        _items = [NSMutableArray array];
        _autoenablesItems = YES;
    }
    return self;
}

- (NSArray<NSMenuItem*>*)itemArray {
    return _items;
}

- (void)addItem:(NSMenuItem*)newItem {
    if (newItem == nil) {
        corvane::objc::complain("AppKit raises an exception");
    }
    [_items addObject:newItem];
}

- (BOOL)popUpMenuPositioningItem:(NSMenuItem*)item atLocation:(NSPoint)location inView:(NSView*)view {
    expectMainThread("NSMenu");
    if (!(item == nil && view == nil)) {
        corvane::objc::complain("the fake opens menus at a place of the screen alone");
    }
    if (self.autoenablesItems) {
        for (NSMenuItem* known in _items) {
            known.enabled = [known.target respondsToSelector:known.action];
        }
    }
    NSMenuItem* const chosen = corvane::FakeMenuBar::State::shared().use(self, location);
    if (!chosen) {
        return NO;
    }
    corvane::sendFakeAction(chosen.target, chosen.action, chosen);
    return YES;
}

@end
