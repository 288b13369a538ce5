#include "platform/macos/desktop/MainBundle.h"

#import <Foundation/Foundation.h>

#include "platform/macos/NSStringText.h"

namespace corvane {

namespace {

std::optional<std::string> textIfAny(NSString* string) {
    return string == nil ? std::nullopt : std::optional(textOf(string));
}

}  // namespace

std::optional<std::string> MainBundle::identifier() {
    return textIfAny(NSBundle.mainBundle.bundleIdentifier);
}

std::filesystem::path MainBundle::path() {
    return textOf(NSBundle.mainBundle.bundlePath);
}

std::optional<std::filesystem::path> MainBundle::resource(const std::string& name) {
    return textIfAny([NSBundle.mainBundle pathForResource:stringOf(name) ofType:nil]);
}

}  // namespace corvane
