#include <algorithm>
#include <cctype>
#include <functional>
#include <string>

#import <Foundation/Foundation.h>
#include <fmt/format.h>

#include "tests/platform/macos/fakes/Foundation/FakeUrlResources.h"
#include "tests/platform/macos/fakes/Foundation/StringText.h"

using corvane::Current;
using corvane::FakeUrlResources;
using corvane::objc::stringOf;
using corvane::objc::textOf;

namespace {

bool isOneOf(char character, std::string_view others) {
    return std::isalnum(static_cast<unsigned char>(character)) != 0 ||
           others.find(character) != std::string::npos;
}

/// RFC 3986, reserved and unreserved characters, and what begins an escape.
bool isUrlCharacter(char character) {
    return isOneOf(character, "-._~:/?#[]@!$&'()*+,;=%");
}

std::string escapedPath(std::string_view path) {
    std::string escaped;
    for (const char each : path) {
        escaped += isOneOf(each, "-._~/!$&'()*+,=:@")
                       ? std::string(1, each)
                       : fmt::format("%{:02X}", static_cast<unsigned char>(each));
    }
    return escaped;
}

std::string unescaped(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%' && i + 2 < text.size()) {
            plain += static_cast<char>(std::stoi(std::string(text.substr(i + 1, 2)), nullptr, 16));
            i += 2;
        } else {
            plain += text[i];
        }
    }
    return plain;
}

/// "" without one.
std::string schemeOf(const std::string& text) {
    const std::size_t end = text.find_first_of(":/?#");
    return end == std::string::npos || text[end] != ':' ? std::string() : text.substr(0, end);
}

/// What follows "scheme:".
std::string_view restOf(const std::string& text) {
    const std::string scheme = schemeOf(text);
    return std::string_view(text).substr(scheme.empty() ? 0 : scheme.size() + 1);
}

/// Without the leading slashes, the user and the port.
std::string hostOf(std::string_view rest) {
    if (!rest.starts_with("//")) {
        return {};
    }
    rest.remove_prefix(2);
    rest = rest.substr(0, rest.find_first_of("/?#"));
    rest.remove_prefix(rest.find('@') == std::string_view::npos ? 0 : rest.find('@') + 1);
    return std::string(rest.substr(0, rest.find(':')));
}

/// Empty for addresses that are no hierarchies, such as mailto:.
std::string_view escapedPathOf(std::string_view rest) {
    if (rest.starts_with("//")) {
        rest.remove_prefix(2);
        rest.remove_prefix(std::min(rest.find_first_of("/?#"), rest.size()));
    }
    return rest.starts_with('/') ? rest.substr(0, rest.find_first_of("?#")) : std::string_view();
}

}  // namespace

@implementation NSURL {
    std::string _text;
}

+ (BOOL)supportsSecureCoding {
    return YES;
}

- (instancetype)initWithText:(const std::string&)text {
    if ((self = [super init]) != nil) {
        _text = text;
    }
    return self;
}

+ (instancetype)URLWithString:(NSString*)URLString {
    const std::string text = textOf(URLString);
    for (const char each : text) {
        if (!isUrlCharacter(each)) {
            return nil;
        }
    }
    return text.empty() ? nil : [[self alloc] initWithText:text];
}

+ (NSURL*)fileURLWithPath:(NSString*)path {
    return [[NSURL alloc] initWithText:"file://" + escapedPath(textOf(path))];
}

- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return self;
}

- (NSString*)absoluteString {
    return stringOf(_text);
}

- (NSString*)scheme {
    const std::string scheme = schemeOf(_text);
    return scheme.empty() ? nil : stringOf(scheme);
}

- (NSString*)host {
    const std::string host = hostOf(restOf(_text));
    return host.empty() ? nil : stringOf(host);
}

// A folder's slash at the end is no part of it.
- (NSString*)path {
    std::string path = unescaped(escapedPathOf(restOf(_text)));
    if (path.size() > 1 && path.ends_with('/')) {
        path.pop_back();
    }
    return stringOf(path);
}

- (NSString*)lastPathComponent {
    return self.path.lastPathComponent;
}

- (NSString*)pathExtension {
    return self.path.pathExtension;
}

- (BOOL)isFileURL {
    return schemeOf(_text) == "file";
}

- (NSURL*)URLByAppendingPathComponent:(NSString*)pathComponent {
    const char* between = _text.ends_with('/') ? "" : "/";
    return [[NSURL alloc] initWithText:_text + between + escapedPath(textOf(pathComponent))];
}

- (BOOL)getResourceValue:(out id*)value forKey:(NSURLResourceKey)key error:(out NSError**)error {
    const FakeUrlResources* resources = Current<FakeUrlResources>::get();
    return resources != nullptr && resources->read(textOf(self.path), key, value, error);
}

- (NSDictionary<NSURLResourceKey, id>*)resourceValuesForKeys:(NSArray<NSURLResourceKey>*)keys
                                                       error:(NSError**)error {
    NSMutableDictionary* values = [NSMutableDictionary dictionary];
    for (NSURLResourceKey key in keys) {
        id value = nil;
        if (![self getResourceValue:&value forKey:key error:error]) {
            return nil;
        }
        values[key] = value;
    }
    return [values copy];
}

- (BOOL)isEqual:(id)object {
    return [object isKindOfClass:[NSURL class]] && _text == static_cast<NSURL*>(object)->_text;
}

- (NSUInteger)hash {
    return std::hash<std::string>()(_text);
}

- (NSString*)description {
    return self.absoluteString;
}

@end
