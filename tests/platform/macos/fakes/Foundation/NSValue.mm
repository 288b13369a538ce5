#include <cmath>
#include <functional>
#include <limits>
#include <string>

#import <Foundation/Foundation.h>
#include <fmt/format.h>

#include "tests/platform/macos/fakes/Foundation/StringText.h"
#include "tests/platform/macos/fakes/objc/LiveObjects.h"

// A number keeps the type that Apple's class keeps for the one it was made of: unsigned types up to 32 bits
// are kept as the next wider signed one, an unsigned one of 64 bits as a signed one if it fits.

@implementation NSValue

+ (BOOL)supportsSecureCoding {
    return YES;
}

- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return self;
}

- (const char*)objCType {
    return "";
}

@end

@implementation NSNumber {
    const char* _type;
    // Which of the two has the value.
    bool _isReal;
    double _real;
    // Of the type "Q" the bits of an unsigned one.
    long long _integer;
}

- (instancetype)initWithInteger:(long long)value type:(const char*)type {
    if ((self = [super init]) != nil) {
        _type = type;
        _integer = value;
    }
    return self;
}

- (instancetype)initWithReal:(double)value type:(const char*)type {
    if ((self = [super init]) != nil) {
        _type = type;
        _isReal = true;
        _real = value;
    }
    return self;
}

- (bool)isBeyondSigned {
    return *_type == 'Q';
}

+ (NSNumber*)numberWithBool:(BOOL)value {
    static NSNumber* const both[] = {[[NSNumber alloc] initWithInteger:0 type:@encode(char)],
                                     [[NSNumber alloc] initWithInteger:1 type:@encode(char)]};
    corvane::objc::makeImmortal(both[0]);
    corvane::objc::makeImmortal(both[1]);
    return both[value ? 1 : 0];
}

+ (NSNumber*)numberWithChar:(char)value {
    return [[NSNumber alloc] initWithInteger:value type:@encode(char)];
}

+ (NSNumber*)numberWithUnsignedChar:(unsigned char)value {
    return [[NSNumber alloc] initWithInteger:value type:@encode(short)];
}

+ (NSNumber*)numberWithShort:(short)value {
    return [[NSNumber alloc] initWithInteger:value type:@encode(short)];
}

+ (NSNumber*)numberWithUnsignedShort:(unsigned short)value {
    return [[NSNumber alloc] initWithInteger:value type:@encode(int)];
}

+ (NSNumber*)numberWithInt:(int)value {
    return [[NSNumber alloc] initWithInteger:value type:@encode(int)];
}

+ (NSNumber*)numberWithUnsignedInt:(unsigned int)value {
    return [[NSNumber alloc] initWithInteger:value type:@encode(long long)];
}

+ (NSNumber*)numberWithLongLong:(long long)value {
    return [[NSNumber alloc] initWithInteger:value type:@encode(long long)];
}

+ (NSNumber*)numberWithUnsignedLongLong:(unsigned long long)value {
    const bool fits = value <= static_cast<unsigned long long>(std::numeric_limits<long long>::max());
    return [[NSNumber alloc] initWithInteger:static_cast<long long>(value)
                                        type:fits ? @encode(long long) : @encode(unsigned long long)];
}

+ (NSNumber*)numberWithLong:(long)value {
    return [NSNumber numberWithLongLong:value];
}

+ (NSNumber*)numberWithUnsignedLong:(unsigned long)value {
    return [NSNumber numberWithUnsignedLongLong:value];
}

+ (NSNumber*)numberWithInteger:(NSInteger)value {
    return [NSNumber numberWithLongLong:value];
}

+ (NSNumber*)numberWithUnsignedInteger:(NSUInteger)value {
    return [NSNumber numberWithUnsignedLongLong:value];
}

+ (NSNumber*)numberWithFloat:(float)value {
    return [[NSNumber alloc] initWithReal:static_cast<double>(value) type:@encode(float)];
}

+ (NSNumber*)numberWithDouble:(double)value {
    return [[NSNumber alloc] initWithReal:value type:@encode(double)];
}

- (const char*)objCType {
    return _type;
}

- (double)doubleValue {
    if (_isReal) {
        return _real;
    }
    return [self isBeyondSigned] ? static_cast<double>(static_cast<unsigned long long>(_integer))
                                 : static_cast<double>(_integer);
}

- (float)floatValue {
    return static_cast<float>(self.doubleValue);
}

// Reals are cut off; those out of range end at the range's end, as arm64 converts them.
- (long long)longLongValue {
    if (!_isReal) {
        return _integer;
    }
    constexpr double limit = 0x1p63;
    if (std::isnan(_real)) {
        return 0;
    }
    if (_real >= limit) {
        return std::numeric_limits<long long>::max();
    }
    return _real < -limit ? std::numeric_limits<long long>::min() : static_cast<long long>(_real);
}

- (unsigned long long)unsignedLongLongValue {
    return static_cast<unsigned long long>(self.longLongValue);
}

- (int)intValue {
    return static_cast<int>(self.longLongValue);
}

- (long)longValue {
    return self.longLongValue;
}

- (NSInteger)integerValue {
    return self.longLongValue;
}

- (NSUInteger)unsignedIntegerValue {
    return self.unsignedLongLongValue;
}

- (BOOL)boolValue {
    return _isReal ? _real != 0 : _integer != 0;
}

- (NSString*)stringValue {
    if (_isReal) {
        return corvane::objc::stringOf(fmt::format("{:.16g}", _real));
    }
    return [self isBeyondSigned] ? [NSString stringWithFormat:@"%llu", self.unsignedLongLongValue]
                                 : [NSString stringWithFormat:@"%lld", _integer];
}

- (NSString*)description {
    return self.stringValue;
}

// Numbers of different types are equal when their values are.
- (BOOL)isEqualToNumber:(NSNumber*)number {
    if (number == nil) {
        return NO;
    }
    if (_isReal || number->_isReal) {
        return self.doubleValue == number.doubleValue;
    }
    return _integer == number->_integer && [self isBeyondSigned] == [number isBeyondSigned];
}

- (BOOL)isEqual:(id)object {
    return [object isKindOfClass:[NSNumber class]] && [self isEqualToNumber:object];
}

- (NSUInteger)hash {
    return std::hash<double>()(self.doubleValue);
}

@end
