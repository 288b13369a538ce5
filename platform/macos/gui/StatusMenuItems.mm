#import "platform/macos/gui/StatusMenuItems.h"

#include "platform/macos/NSStringText.h"

namespace corvane {

namespace {

NSMenuItem* makeItem(const StatusMenuEntry& entry, CorvaneActionTarget* target) {
    if (entry.isSeparator) {
        return [NSMenuItem separatorItem];
    }
    NSMenuItem* const item = [[NSMenuItem alloc] initWithTitle:stringOf(entry.label)
                                                        action:@selector(perform:)
                                                 keyEquivalent:@""];
    item.target = target;
    item.tag = entry.id;
    item.enabled = entry.isEnabled;
    item.state = entry.isChecked.value_or(false) ? NSControlStateValueOn : NSControlStateValueOff;
    return item;
}

}  // namespace

NSMenu* makeStatusMenu(const std::vector<StatusMenuEntry>& entries, CorvaneActionTarget* target) {
    NSMenu* const menu = [[NSMenu alloc] init];
    // The entries say what can be chosen.
    menu.autoenablesItems = NO;
    for (const StatusMenuEntry& entry : entries) {
        [menu addItem:makeItem(entry, target)];
    }
    return menu;
}

}  // namespace corvane
