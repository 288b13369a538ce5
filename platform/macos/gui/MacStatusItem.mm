#include "platform/macos/gui/MacStatusItem.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>
#include <utility>

#import <AppKit/AppKit.h>

#include "platform/Lifetime.h"
#include "platform/macos/NSStringText.h"
#import "platform/macos/gui/ActionTarget.h"
#import "platform/macos/gui/StatusMenuItems.h"
#import "platform/macos/gui/StatusSymbol.h"

namespace corvane {

namespace {

/// In the menu bar's own coordinates, which count upwards.
NSRect screenFrame(NSStatusBarButton* button) {
    return [button.window convertRectToScreen:[button convertRect:button.bounds toView:nil]];
}

/// The middle of its lower edge, as windows are placed: downwards from the first screen's upper edge.
ScreenPoint belowButton(NSStatusBarButton* button) {
    const NSRect frame = screenFrame(button);
    const CGFloat height = NSHeight(NSScreen.screens.firstObject.frame);
    return {static_cast<int>(std::lround(NSMidX(frame))),
            static_cast<int>(std::lround(height - NSMinY(frame)))};
}

bool isMenuClick(NSEvent* event) {
    const bool isRight = event.type == NSEventTypeRightMouseUp;
    const bool isControl =
        event.type == NSEventTypeLeftMouseUp && (event.modifierFlags & NSEventModifierFlagControl) != 0;
    return isRight || isControl;
}

bool isBlank(const std::string& title) {
    return title.find_first_not_of(' ') == std::string::npos;
}

}  // namespace

/// What AppKit calls runs within its own doings, such as an open menu: it is passed on as work of the main
/// loop.
class MacStatusItem::Place {
public:
    explicit Place(SerialQueue& mainLoop) : mainLoop_(mainLoop) {
        // Whoever else holds a target may still call it after this is gone.
        const std::function<void()> clicked = lifetime_.bound([this] { click(); });
        const std::function<void(int)> chosen = lifetime_.bound([this](int id) { choose(id); });
        clicks_ = [[CorvaneActionTarget alloc] initWithAction:^(id) {
          clicked();
        }];
        choices_ = [[CorvaneActionTarget alloc] initWithAction:^(NSMenuItem* entry) {
          chosen(static_cast<int>(entry.tag));
        }];
        item_ = [NSStatusBar.systemStatusBar statusItemWithLength:NSVariableStatusItemLength];
        button().target = clicks_;
        button().action = @selector(perform:);
        [button() sendActionOn:NSEventMaskLeftMouseUp | NSEventMaskRightMouseUp];
        setTitle("");
    }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;
    ~Place() { [NSStatusBar.systemStatusBar removeStatusItem:item_]; }

    void setImage(StatusImage image) {
        if (shownImage_ != image) {
            shownImage_ = image;
            button().image = statusSymbol(image);
        }
    }

    void setTitle(const std::string& title) {
        button().title = isBlank(title) ? @"" : stringOf(title);
        button().imagePosition = isBlank(title) ? NSImageOnly : NSImageLeading;
    }

    void setToolTip(const std::string& title, const std::string& text) {
        const std::string lines = title.empty() || text.empty() ? title + text : title + "\n" + text;
        button().toolTip = lines.empty() ? nil : stringOf(lines);
    }

    void setMenu(std::vector<StatusMenuEntry> entries) { entries_ = std::move(entries); }
    void setHandlers(StatusItemHandlers handlers) { handlers_ = std::move(handlers); }

    /// None while the menu bar has not placed it yet.
    [[nodiscard]] StatusItemAnchor anchor() const {
        return button().window == nil ? StatusItemAnchor{} : StatusItemAnchor{belowButton(button())};
    }

private:
    [[nodiscard]] NSStatusBarButton* button() const { return item_.button; }

    void click() {
        if (isMenuClick(NSApplication.sharedApplication.currentEvent)) {
            openMenu();
            return;
        }
        mainLoop_.async(lifetime_.bound([this, anchor = StatusItemAnchor{belowButton(button())}] {
            if (const auto activated = handlers_.activated) {
                activated(anchor);
            }
        }));
    }

    /// Returns when it has closed, after which this may be gone.
    void openMenu() {
        if (!entries_.empty()) {
            NSMenu* const menu = makeStatusMenu(entries_, choices_);
            [menu popUpMenuPositioningItem:nil atLocation:screenFrame(button()).origin inView:nil];
        }
    }

    /// The menu may have changed since it was opened.
    void choose(int id) {
        mainLoop_.async(lifetime_.bound([this, id] {
            const bool isOffered = std::ranges::any_of(entries_, [&](const StatusMenuEntry& entry) {
                return entry.id == id && entry.isEnabled && !entry.isSeparator;
            });
            if (const auto chosen = handlers_.chosen; isOffered && chosen) {
                chosen(id);
            }
        }));
    }

    SerialQueue& mainLoop_;
    CorvaneActionTarget* clicks_;
    CorvaneActionTarget* choices_;
    NSStatusItem* item_;
    std::optional<StatusImage> shownImage_;
    std::vector<StatusMenuEntry> entries_;
    StatusItemHandlers handlers_;
    Lifetime lifetime_;
};

MacStatusItem::MacStatusItem(SerialQueue& mainLoop) : place_(std::make_unique<Place>(mainLoop)) {
    setImage(StatusImage::gauge50);
}

MacStatusItem::~MacStatusItem() = default;

void MacStatusItem::setImage(StatusImage image) {
    place_->setImage(image);
}

void MacStatusItem::setTitle(const std::string& title) {
    place_->setTitle(title);
}

void MacStatusItem::setToolTip(const std::string& title, const std::string& text) {
    place_->setToolTip(title, text);
}

void MacStatusItem::setMenu(std::vector<StatusMenuEntry> entries) {
    place_->setMenu(std::move(entries));
}

void MacStatusItem::setHandlers(StatusItemHandlers handlers) {
    place_->setHandlers(std::move(handlers));
}

StatusItemAnchor MacStatusItem::anchor() const {
    return place_->anchor();
}

}  // namespace corvane
