#include "platform/macos/NSStringText.h"

#import <Foundation/Foundation.h>

namespace corvane {

std::string textOf(NSString* string) {
    const NSUInteger size = [string lengthOfBytesUsingEncoding:NSUTF8StringEncoding];
    return size == 0 ? std::string() : std::string(string.UTF8String, size);
}

NSString* stringOf(std::string_view text) {
    NSString* string = [[NSString alloc] initWithBytes:text.data()
                                                length:text.size()
                                              encoding:NSUTF8StringEncoding];
    return string ? string : @"";
}

}  // namespace corvane
