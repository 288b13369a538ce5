#include "platform/macos/gui/MacAppearance.h"

#include <utility>

#import <AppKit/AppKit.h>

#include "platform/Observers.h"
#import "platform/macos/gui/AppearanceObserver.h"

namespace corvane {

namespace {

bool isApplicationDark() {
    NSAppearance* const appearance = NSApplication.sharedApplication.effectiveAppearance;
    NSAppearanceName const best =
        [appearance bestMatchFromAppearancesWithNames:@[ NSAppearanceNameAqua, NSAppearanceNameDarkAqua ]];
    return [best isEqualToString:NSAppearanceNameDarkAqua];
}

}  // namespace

/// Tells the observers of changes between dark and light, not of others, such as one of contrast.
class MacAppearance::Watch {
public:
    Watch() {
        observer_ = [[CorvaneAppearanceObserver alloc] initWithChanged:^{
          update();
        }];
    }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
    ~Watch() { [observer_ stop]; }

    [[nodiscard]] bool isDark() const { return isDark_; }
    Observers& observers() { return observers_; }

private:
    void update() {
        const bool isDark = isApplicationDark();
        if (std::exchange(isDark_, isDark) != isDark) {
            observers_.notify();
        }
    }

    bool isDark_ = isApplicationDark();
    Observers observers_;
    CorvaneAppearanceObserver* observer_;
};

MacAppearance::MacAppearance() : watch_(std::make_unique<Watch>()) {}

MacAppearance::~MacAppearance() = default;

bool MacAppearance::isDark() const {
    return watch_->isDark();
}

std::unique_ptr<Observation> MacAppearance::observe(std::function<void()> changed) {
    return watch_->observers().add(std::move(changed));
}

}  // namespace corvane
