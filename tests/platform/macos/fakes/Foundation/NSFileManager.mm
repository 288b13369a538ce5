#include <filesystem>
#include <system_error>

#import <Foundation/Foundation.h>

#include "platform/macos/NSStringText.h"
#include "tests/platform/macos/fakes/Foundation/FakeTrash.h"
#include "tests/platform/macos/fakes/Foundation/FakeVolumes.h"
#include "tests/platform/macos/fakes/objc/LiveObjects.h"

NSURLResourceKey const NSURLVolumeNameKey = @"NSURLVolumeNameKey";
NSURLResourceKey const NSURLVolumeIsInternalKey = @"NSURLVolumeIsInternalKey";
NSURLResourceKey const NSURLVolumeIsBrowsableKey = @"NSURLVolumeIsBrowsableKey";

namespace corvane {

namespace {

NSError* errorOf(const std::error_code& code) {
    return [NSError errorWithDomain:NSPOSIXErrorDomain code:code.value() userInfo:nil];
}

}  // namespace

bool FakeTrash::take(const std::string& path) {
    if (isFailing_) {
        return false;
    }
    std::filesystem::remove_all(path);
    contents_.push_back(path);
    return true;
}

}  // namespace corvane

@implementation NSFileManager

+ (NSFileManager*)defaultManager {
    static NSFileManager* const manager = [] {
        NSFileManager* made = [[NSFileManager alloc] init];
        corvane::objc::makeImmortal(made);
        return made;
    }();
    return manager;
}

- (NSArray<NSURL*>*)mountedVolumeURLsIncludingResourceValuesForKeys:(NSArray<NSURLResourceKey>*)propertyKeys
                                                            options:(NSVolumeEnumerationOptions)options {
    const auto* fake = corvane::Current<corvane::FakeVolumes>::get();
    if (fake == nullptr || fake->isFailing()) {
        return nil;
    }
    NSMutableArray<NSURL*>* urls = [NSMutableArray array];
    for (const auto& volume : fake->volumes()) {
        if (!volume.isHidden || (options & NSVolumeEnumerationSkipHiddenVolumes) == 0) {
            [urls addObject:[NSURL fileURLWithPath:corvane::stringOf(volume.path)]];
        }
    }
    return urls;
}

- (BOOL)fileExistsAtPath:(NSString*)path {
    return std::filesystem::exists(corvane::textOf(path));
}

- (NSArray<NSString*>*)contentsOfDirectoryAtPath:(NSString*)path error:(NSError**)error {
    std::error_code problem;
    std::filesystem::directory_iterator entries(corvane::textOf(path), problem);
    if (problem) {
        if (error != nullptr) {
            *error = corvane::errorOf(problem);
        }
        return nil;
    }
    NSMutableArray<NSString*>* names = [NSMutableArray array];
    for (const auto& entry : entries) {
        [names addObject:corvane::stringOf(entry.path().filename().native())];
    }
    return names;
}

- (NSString*)displayNameAtPath:(NSString*)path {
    return path.lastPathComponent;
}

- (BOOL)trashItemAtURL:(NSURL*)url resultingItemURL:(NSURL**)outResultingURL error:(NSError**)error {
    auto* const trash = corvane::Current<corvane::FakeTrash>::get();
    const bool isTaken = trash != nullptr && trash->take(corvane::textOf(url.path));
    if (!isTaken && error != nullptr) {
        *error = corvane::errorOf(std::make_error_code(std::errc::permission_denied));
    }
    return isTaken;
}

@end
