#include "platform/macos/NSLogLog.h"

#import <Foundation/Foundation.h>

#include "platform/macos/NSStringText.h"

namespace corvane {

void NSLogLog::write(std::string_view line) noexcept {
    @autoreleasepool {
        // Never as the format: the line may hold what others sent.
        NSLog(@"%@", stringOf(line));
    }
}

}  // namespace corvane
