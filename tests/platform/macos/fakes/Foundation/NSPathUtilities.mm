#include <cstdlib>
#include <filesystem>

#import <Foundation/Foundation.h>

#include "platform/macos/NSStringText.h"

NSString* NSTemporaryDirectory(void) {
    return corvane::stringOf(std::filesystem::temp_directory_path().native());
}

NSString* NSHomeDirectory(void) {
    const char* const home = std::getenv("HOME");
    return corvane::stringOf(home == nullptr ? "/" : home);
}
