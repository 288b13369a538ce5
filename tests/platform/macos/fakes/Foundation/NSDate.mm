#include <functional>

#import <Foundation/Foundation.h>

@implementation NSDate {
    NSTimeInterval _since1970;
}

+ (BOOL)supportsSecureCoding {
    return YES;
}

+ (instancetype)dateWithTimeIntervalSince1970:(NSTimeInterval)secs {
    NSDate* date = [[self alloc] init];
    date->_since1970 = secs;
    return date;
}

- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return self;
}

- (NSTimeInterval)timeIntervalSince1970 {
    return _since1970;
}

- (BOOL)isEqualToDate:(NSDate*)otherDate {
    return otherDate != nil && _since1970 == otherDate->_since1970;
}

- (BOOL)isEqual:(id)object {
    return [object isKindOfClass:[NSDate class]] && [self isEqualToDate:object];
}

- (NSUInteger)hash {
    return std::hash<double>()(_since1970);
}

@end
