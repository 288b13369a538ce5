#include "platform/macos/desktop/MacVolumes.h"

#include <utility>

#import <Foundation/Foundation.h>

#include "platform/macos/NSStringText.h"
#include "platform/macos/desktop/runInBackground.h"

namespace corvane {

namespace {

NSArray<NSURLResourceKey>* volumeKeys() {
    return @[ NSURLVolumeNameKey, NSURLVolumeIsInternalKey, NSURLVolumeIsBrowsableKey ];
}

std::optional<std::string> textIn(id value) {
    return [value isKindOfClass:[NSString class]] ? std::optional(textOf(value)) : std::nullopt;
}

std::optional<bool> answerIn(id value) {
    return [value isKindOfClass:[NSNumber class]] ? std::optional<bool>([value boolValue]) : std::nullopt;
}

/// Values that cannot be read are those that the system does not say.
Volume volumeAt(NSURL* url) {
    NSDictionary<NSURLResourceKey, id>* values = [url resourceValuesForKeys:volumeKeys() error:nil];
    return {.path = textOf(url.path),
            .name = textIn(values[NSURLVolumeNameKey]),
            .isInternal = answerIn(values[NSURLVolumeIsInternalKey]),
            .isBrowsable = answerIn(values[NSURLVolumeIsBrowsableKey])};
}

void listDirectory(const std::string& path) {
    @autoreleasepool {
        [NSFileManager.defaultManager contentsOfDirectoryAtPath:stringOf(path) error:nil];
    }
}

bool postToBackground(std::function<void()> work) {
    runInBackground(std::move(work));
    return true;
}

}  // namespace

MacVolumes::MacVolumes(SerialQueue& mainLoop) : touches_(mainLoop, postToBackground, listDirectory) {}

std::vector<Volume> MacVolumes::mounted() const {
    NSArray<NSURL*>* urls = [NSFileManager.defaultManager
        mountedVolumeURLsIncludingResourceValuesForKeys:volumeKeys()
                                                options:NSVolumeEnumerationSkipHiddenVolumes];
    std::vector<Volume> volumes;
    for (NSURL* url in urls) {
        volumes.push_back(volumeAt(url));
    }
    return volumes;
}

bool MacVolumes::isMounted(const std::string& path) const {
    // Without any of their values, for which the system might have to ask a drive; a folder that an unmounted
    // drive has left behind is not among them.
    NSArray<NSURL*>* urls = [NSFileManager.defaultManager mountedVolumeURLsIncludingResourceValuesForKeys:@[]
                                                                                                  options:0];
    NSString* wanted = stringOf(path);
    for (NSURL* url in urls) {
        if ([url.path isEqualToString:wanted]) {
            return true;
        }
    }
    return false;
}

void MacVolumes::touch(const std::string& path, std::function<void()> done) {
    touches_.begin(path, std::move(done));
}

}  // namespace corvane
