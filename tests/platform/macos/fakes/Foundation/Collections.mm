#include "tests/platform/macos/fakes/Foundation/Collections.h"

#include <fmt/format.h>

#include "tests/platform/macos/fakes/objc/Complaints.h"

namespace corvane::objc {

id notNil(id object, const char* message) {
    if (object == nil) {
        fatal(fmt::format("nil given to {}", message));
    }
    return object;
}

}  // namespace corvane::objc
