#import <Foundation/Foundation.h>

#include "tests/platform/macos/fakes/objc/LiveObjects.h"

@implementation NSNull

+ (BOOL)supportsSecureCoding {
    return YES;
}

+ (NSNull*)null {
    static NSNull* const only = [[NSNull alloc] init];
    corvane::objc::makeImmortal(only);
    return only;
}

- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return self;
}

- (NSString*)description {
    return @"<null>";
}

@end
