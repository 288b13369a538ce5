#include <functional>
#include <string>

#import <Foundation/Foundation.h>

@implementation NSData {
    std::string _bytes;
}

+ (BOOL)supportsSecureCoding {
    return YES;
}

+ (instancetype)data {
    return [[self alloc] init];
}

+ (instancetype)dataWithBytes:(const void*)bytes length:(NSUInteger)length {
    NSData* data = [[self alloc] init];
    if (length > 0) {
        data->_bytes.assign(static_cast<const char*>(bytes), length);
    }
    return data;
}

- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return self;
}

- (NSUInteger)length {
    return _bytes.size();
}

- (const void*)bytes {
    return _bytes.empty() ? nullptr : _bytes.data();
}

- (BOOL)isEqualToData:(NSData*)other {
    return other != nil && _bytes == other->_bytes;
}

- (BOOL)isEqual:(id)object {
    return [object isKindOfClass:[NSData class]] && [self isEqualToData:object];
}

- (NSUInteger)hash {
    return std::hash<std::string>()(_bytes);
}

@end
