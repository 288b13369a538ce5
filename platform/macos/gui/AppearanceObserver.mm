#import "platform/macos/gui/AppearanceObserver.h"

#import <AppKit/AppKit.h>

namespace {

NSString* const appearanceKey = @"effectiveAppearance";
/// Its address tells this observation from others of the same object.
char appearanceContext = 0;

}  // namespace

@implementation CorvaneAppearanceObserver {
    void (^_changed)(void);
}

- (instancetype)initWithChanged:(void (^)(void))changed {
    self = [super init];
    if (self) {
        _changed = changed;
        [NSApplication.sharedApplication addObserver:self
                                          forKeyPath:appearanceKey
                                             options:NSKeyValueObservingOptionNew
                                             context:&appearanceContext];
    }
    return self;
}

- (void)stop {
    [NSApplication.sharedApplication removeObserver:self forKeyPath:appearanceKey context:&appearanceContext];
}

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)context {
    if (context == &appearanceContext) {
        _changed();
    }
}

@end
