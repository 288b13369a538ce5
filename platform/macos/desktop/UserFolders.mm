#include "platform/macos/desktop/UserFolders.h"

#import <Foundation/Foundation.h>

#include "platform/macos/NSStringText.h"

namespace corvane {

std::filesystem::path UserFolders::home() {
    return textOf(NSHomeDirectory());
}

std::filesystem::path UserFolders::temporary() {
    return textOf(NSTemporaryDirectory());
}

}  // namespace corvane
