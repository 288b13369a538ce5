#include <functional>
#include <mutex>
#include <set>
#include <string>

#import <Foundation/Foundation.h>

#include "tests/platform/macos/fakes/CoreFoundation/Utf8.h"
#include "tests/platform/macos/fakes/Foundation/StringText.h"
#include "tests/platform/macos/fakes/objc/Abi.h"
#include "tests/platform/macos/fakes/objc/Complaints.h"

// Strings keep UTF-8. Literals are what the compiler made of them: data in the program, or an address that is
// itself a short string.

using corvane::utf16LengthOf;
using corvane::objc::formatted;
using corvane::objc::stringOf;
using corvane::objc::textOf;

@interface NSTinyString : NSString
@end

@interface NSString ()
// In UTF-8.
- (const std::string&)bytes;
@end

@implementation NSString {
    std::string _bytes;
}

- (const std::string&)bytes {
    return _bytes;
}

+ (BOOL)supportsSecureCoding {
    return YES;
}

+ (instancetype)string {
    return [[self alloc] init];
}

+ (instancetype)stringWithUTF8String:(const char*)nullTerminatedCString {
    return [[self alloc] initWithBytes:nullTerminatedCString
                                length:std::char_traits<char>::length(nullTerminatedCString)
                              encoding:NSUTF8StringEncoding];
}

+ (instancetype)stringWithFormat:(NSString*)format, ... {
    va_list arguments;
    va_start(arguments, format);
    const std::string text = formatted(format, arguments);
    va_end(arguments);
    return [[self alloc] initWithBytes:text.data() length:text.size() encoding:NSUTF8StringEncoding];
}

- (instancetype)initWithBytes:(const void*)bytes length:(NSUInteger)len encoding:(NSStringEncoding)encoding {
    if (encoding != NSUTF8StringEncoding) {
        corvane::objc::fatal("this fake knows strings in UTF-8 alone");
    }
    const std::string_view text(static_cast<const char*>(bytes), len);
    if (!utf16LengthOf(text)) {
        return nil;
    }
    if ((self = [super init]) != nil) {
        _bytes = text;
    }
    return self;
}

- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return self;
}

- (NSUInteger)length {
    return utf16LengthOf([self bytes]).value();
}

- (const char*)UTF8String {
    return [self bytes].c_str();
}

- (NSUInteger)lengthOfBytesUsingEncoding:(NSStringEncoding)enc {
    (void)enc;
    return [self bytes].size();
}

- (BOOL)isEqualToString:(NSString*)aString {
    return aString != nil && [self bytes] == [aString bytes];
}

- (BOOL)isEqual:(id)object {
    return [object isKindOfClass:[NSString class]] && [self isEqualToString:object];
}

- (NSUInteger)hash {
    return std::hash<std::string>()([self bytes]);
}

- (NSString*)description {
    return self;
}

- (BOOL)hasPrefix:(NSString*)str {
    return [self bytes].starts_with([str bytes]);
}

- (BOOL)hasSuffix:(NSString*)str {
    return [self bytes].ends_with([str bytes]);
}

- (NSString*)stringByAppendingPathComponent:(NSString*)str {
    const std::string& path = [self bytes];
    const char* between = path.empty() || path.ends_with('/') ? "" : "/";
    return stringOf(path + between + [str bytes]);
}

- (NSString*)lastPathComponent {
    std::string path = [self bytes];
    while (path.size() > 1 && path.ends_with('/')) {
        path.pop_back();
    }
    return path == "/" ? @"/" : stringOf(path.substr(path.rfind('/') + 1));
}

- (NSString*)pathExtension {
    const std::string name = textOf(self.lastPathComponent);
    const std::size_t dot = name.rfind('.');
    return dot == std::string::npos || dot == 0 ? @"" : stringOf(name.substr(dot + 1));
}

- (NSString*)stringByDeletingPathExtension {
    const std::size_t extension = textOf(self.pathExtension).size();
    const std::string& path = [self bytes];
    return extension == 0 ? self : stringOf(path.substr(0, path.size() - extension - 1));
}

@end

namespace {

/// The same text is kept once, for ever: what literals say has to outlive every use of it.
const std::string& keptForEver(std::string text) {
    static auto& mutex = *new std::mutex;
    static auto& texts = *new std::set<std::string>;
    const std::lock_guard lock(mutex);
    return *texts.insert(std::move(text)).first;
}

void appendUtf8(std::string& text, char32_t character) {
    const auto byte = [&](unsigned mark, unsigned shift) {
        text += static_cast<char>(mark | (character >> shift & (mark == 0x80 ? 0x3FU : 0x7FU)));
    };
    if (character < 0x80) {
        byte(0, 0);
    } else if (character < 0x800) {
        byte(0xC0, 6);
        byte(0x80, 0);
    } else if (character < 0x10000) {
        byte(0xE0, 12);
        byte(0x80, 6);
        byte(0x80, 0);
    } else {
        byte(0xF0, 18);
        byte(0x80, 12);
        byte(0x80, 6);
        byte(0x80, 0);
    }
}

std::string utf8Of(const char16_t* units, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        char32_t character = units[i];
        if (character >= 0xD800 && character < 0xDC00 && i + 1 < count) {
            character = 0x10000 + ((character - 0xD800) << 10U) + (units[++i] - 0xDC00U);
        }
        appendUtf8(text, character);
    }
    return text;
}

std::string textOfLiteral(const corvane::objc::ConstantString& literal) {
    return literal.encoding == 0 ? std::string(static_cast<const char*>(literal.data), literal.length)
                                 : utf8Of(static_cast<const char16_t*>(literal.data), literal.length);
}

/// Up to eight characters of 7 bits from the top, and how many there are in the bits 3 to 7.
std::string textOfAddress(std::uintptr_t address) {
    std::string text;
    for (unsigned i = 0; i < (address >> 3U & 31U); ++i) {
        text += static_cast<char>(address >> (57U - 7U * i) & 127U);
    }
    return text;
}

}  // namespace

@implementation NSSimpleCString
@end

@implementation NSConstantString

- (const std::string&)bytes {
    return keptForEver(textOfLiteral(*(__bridge const corvane::objc::ConstantString*)self));
}

@end

@implementation NSTinyString

- (const std::string&)bytes {
    return keptForEver(textOfAddress(reinterpret_cast<std::uintptr_t>((__bridge void*)self)));
}

@end
