#pragma once

#include <map>
#include <string>

#include "tests/platform/macos/fakes/Current.h"

@class NSError, NSString, NSURL;

namespace corvane {

/// What the file system tells of files by URL: nothing but what a test sets here.
class FakeUrlResources {
public:
    FakeUrlResources();
    ~FakeUrlResources();

    /// The value of a key of the file at this path; nil for a file that has none, which is no error.
    void set(const std::string& path, NSString* key, id value);
    /// From now on nothing can be read of the file at this path.
    void fail(const std::string& path, NSError* error);

    /// Null when the file is not there or nothing can be read of it; then `error`, if there is one, says why.
    bool read(const std::string& path, NSString* key, id* value, NSError** error) const;

private:
    struct File;
    std::map<std::string, File> files_;
    Current<FakeUrlResources> current_;
};

}  // namespace corvane
