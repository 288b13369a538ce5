#include "platform/macos/desktop/MacAppleScript.h"

#import <Foundation/Foundation.h>

#include "platform/macos/NSStringText.h"

namespace corvane {

namespace {

AppleScriptResult failureOf(NSDictionary<NSString*, id>* error) {
    AppleScriptResult result{.outcome = AppleScriptResult::Outcome::failure};
    if (id number = error[NSAppleScriptErrorNumber]; [number isKindOfClass:[NSNumber class]]) {
        result.number = [number intValue];
    }
    if (id message = error[NSAppleScriptErrorMessage]; [message isKindOfClass:[NSString class]]) {
        result.message = textOf(message);
    }
    return result;
}

}  // namespace

AppleScriptResult MacAppleScript::run(const std::string& source) {
    NSAppleScript* script = [[NSAppleScript alloc] initWithSource:stringOf(source)];
    if (script == nil) {
        return {.outcome = AppleScriptResult::Outcome::notCreated};
    }
    NSDictionary<NSString*, id>* error = nil;
    return [script executeAndReturnError:&error] == nil ? failureOf(error) : AppleScriptResult();
}

}  // namespace corvane
