#include "platform/macos/NumberKind.h"

#include <string_view>

#import <Foundation/Foundation.h>

namespace corvane {

namespace {

/// Each Boolean is one of two objects, wherever it comes from; its type is a byte's.
bool isBoolean(NSNumber* number) {
    return number == [NSNumber numberWithBool:YES] || number == [NSNumber numberWithBool:NO];
}

}  // namespace

NumberKind kindOf(NSNumber* number) {
    if (isBoolean(number)) {
        return NumberKind::boolean;
    }
    const std::string_view type = number.objCType;
    if (type == @encode(double) || type == @encode(float)) {
        return NumberKind::real;
    }
    const bool isBeyond = type == @encode(unsigned long long) && number.longLongValue < 0;
    return isBeyond ? NumberKind::unsignedBeyondInteger : NumberKind::integer;
}

}  // namespace corvane
