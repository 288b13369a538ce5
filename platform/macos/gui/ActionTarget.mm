#import "platform/macos/gui/ActionTarget.h"

@implementation CorvaneActionTarget {
    void (^_action)(id);
}

- (instancetype)initWithAction:(void (^)(id sender))action {
    self = [super init];
    if (self) {
        _action = action;
    }
    return self;
}

- (void)perform:(id)sender {
    _action(sender);
}

@end
