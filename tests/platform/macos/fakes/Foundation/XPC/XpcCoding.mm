#include "tests/platform/macos/fakes/Foundation/XPC/XpcCoding.h"

#include <cstring>
#include <string_view>

#include <gtest/gtest.h>

#include "tests/platform/macos/fakes/Foundation/StringText.h"

namespace corvane {

namespace {

bool isOneOf(id object, NSSet<Class>* classes) {
    for (Class aClass in classes) {
        if ([object isKindOfClass:aClass]) {
            return true;
        }
    }
    return false;
}

/// Integers arrive as the widest there are.
NSNumber* copiedNumber(NSNumber* number) {
    if (number == [NSNumber numberWithBool:YES] || number == [NSNumber numberWithBool:NO]) {
        return [NSNumber numberWithBool:number.boolValue];
    }
    const std::string_view type = number.objCType;
    return type == @encode(double) || type == @encode(float)
               ? [NSNumber numberWithDouble:number.doubleValue]
               : [NSNumber numberWithLongLong:number.longLongValue];
}

}  // namespace

id copyAcross(id object, NSSet<Class>* classes, bool& isAllowed) {
    if (object == nil) {
        return nil;
    }
    isAllowed = isAllowed && isOneOf(object, classes);
    if ([object isKindOfClass:[NSString class]]) {
        return objc::stringOf(objc::textOf(object));
    }
    if ([object isKindOfClass:[NSNumber class]]) {
        return copiedNumber(object);
    }
    if ([object isKindOfClass:[NSArray class]]) {
        NSMutableArray* copy = [NSMutableArray array];
        for (id element in object) {
            [copy addObject:copyAcross(element, classes, isAllowed)];
        }
        return copy;
    }
    if ([object isKindOfClass:[NSDictionary class]]) {
        NSMutableDictionary* copy = [NSMutableDictionary dictionary];
        for (id key in object) {
            [copy setObject:copyAcross([object objectForKey:key], classes, isAllowed)
                     forKey:copyAcross(key, classes, isAllowed)];
        }
        return copy;
    }
    EXPECT_TRUE([object conformsToProtocol:@protocol(NSSecureCoding)])
        << "an object that cannot travel was sent";
    return object;
}

}  // namespace corvane
