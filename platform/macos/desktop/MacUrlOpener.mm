#include "platform/macos/desktop/MacUrlOpener.h"

#import <AppKit/NSWorkspace.h>

#include "platform/MailtoUrl.h"
#include "platform/macos/NSStringText.h"
#include "platform/macos/desktop/MacHttpsUrl.h"

namespace corvane {

void MacUrlOpener::open(const std::string& url) {
    NSURL* address = isMailtoUrl(url) ? [NSURL URLWithString:stringOf(url)] : httpsUrl(url);
    if (address != nil) {
        [NSWorkspace.sharedWorkspace openURL:address];
    }
}

}  // namespace corvane
