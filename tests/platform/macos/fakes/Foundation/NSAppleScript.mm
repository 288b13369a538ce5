#import <Foundation/Foundation.h>

#include "platform/macos/NSStringText.h"
#include "tests/platform/macos/fakes/Foundation/FakeAppleScript.h"
#include "tests/platform/macos/fakes/MainThread.h"
#include "tests/platform/macos/fakes/objc/Complaints.h"

NSString* const NSAppleScriptErrorMessage = @"NSAppleScriptErrorMessage";
NSString* const NSAppleScriptErrorNumber = @"NSAppleScriptErrorNumber";

@interface NSAppleEventDescriptor : NSObject
@end

@implementation NSAppleEventDescriptor
@end

namespace corvane {

namespace {

FakeAppleScript& scripting() {
    auto* const fake = Current<FakeAppleScript>::get();
    if (fake == nullptr) {
        objc::fatal("AppleScript is used without a FakeAppleScript");
    }
    return *fake;
}

NSDictionary<NSString*, id>* dictionaryOf(const FakeAppleScript::Error& error) {
    NSMutableDictionary<NSString*, id>* dictionary = [NSMutableDictionary dictionary];
    if (error.number) {
        dictionary[NSAppleScriptErrorNumber] = error.isNonsense ? @"number" : @(*error.number);
    }
    if (error.message) {
        dictionary[NSAppleScriptErrorMessage] = error.isNonsense ? @1 : stringOf(*error.message);
    }
    return dictionary;
}

}  // namespace

std::optional<FakeAppleScript::Error> FakeAppleScript::run(const std::string& source) {
    sources_.push_back(source);
    if (work_) {
        work_();
    }
    return error_;
}

}  // namespace corvane

@implementation NSAppleScript {
    std::string _source;
}

- (instancetype)initWithSource:(NSString*)source {
    corvane::expectMainThread("NSAppleScript");
    self = [super init];
    if (!self || corvane::scripting().isRefusing()) {
        return nil;
    }
    _source = corvane::textOf(source);
    return self;
}

- (NSAppleEventDescriptor*)executeAndReturnError:(NSDictionary<NSString*, id>**)errorInfo {
    corvane::expectMainThread("NSAppleScript");
    const auto error = corvane::scripting().run(_source);
    if (!error) {
        return [[NSAppleEventDescriptor alloc] init];
    }
    if (errorInfo != nullptr && !error->isMissing) {
        *errorInfo = corvane::dictionaryOf(*error);
    }
    return nil;
}

@end
