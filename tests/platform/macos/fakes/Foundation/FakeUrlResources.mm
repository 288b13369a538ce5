#include "tests/platform/macos/fakes/Foundation/FakeUrlResources.h"

#import <Foundation/Foundation.h>

namespace corvane {

struct FakeUrlResources::File {
    NSMutableDictionary* values = [NSMutableDictionary dictionary];
    NSError* error = nil;
};

FakeUrlResources::FakeUrlResources() : current_(*this) {}

FakeUrlResources::~FakeUrlResources() = default;

void FakeUrlResources::set(const std::string& path, NSString* key, id value) {
    files_[path].values[key] = value;
}

void FakeUrlResources::fail(const std::string& path, NSError* error) {
    files_[path].error = error;
}

bool FakeUrlResources::read(const std::string& path, NSString* key, id* value, NSError** error) const {
    // NSFileReadNoSuchFileError of Foundation's public documentation.
    constexpr NSInteger noSuchFile = 260;
    const auto found = files_.find(path);
    const bool there = found != files_.end();
    if (there && found->second.error == nil) {
        *value = found->second.values[key];
        return true;
    }
    if (error != nullptr) {
        *error = there ? found->second.error
                       : [NSError errorWithDomain:NSCocoaErrorDomain code:noSuchFile userInfo:nil];
    }
    return false;
}

}  // namespace corvane
