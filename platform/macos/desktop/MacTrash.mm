#include "platform/macos/desktop/MacTrash.h"

#import <Foundation/Foundation.h>

#include "platform/macos/NSStringText.h"

namespace corvane {

void MacTrash::moveThere(const std::filesystem::path& path) {
    NSFileManager* files = NSFileManager.defaultManager;
    NSString* place = stringOf(path.native());
    if ([files fileExistsAtPath:place]) {
        [files trashItemAtURL:[NSURL fileURLWithPath:place] resultingItemURL:nil error:nil];
    }
}

}  // namespace corvane
