#include "tests/platform/macos/fakes/Foundation/FakeBundles.h"

#include <filesystem>
#include <utility>

#import <Foundation/Foundation.h>
#include <fmt/format.h>

#include "platform/macos/NSStringText.h"

namespace corvane {

namespace {

NSString* objectOf(const std::optional<std::string>& text) {
    return text ? stringOf(*text) : nil;
}

}  // namespace

FakeBundles::FakeBundles(std::optional<std::string> mainIdentifier, std::string mainPath)
    : mainPath_(std::move(mainPath)) {
    bundles_[mainPath_] = {.identifier = std::move(mainIdentifier)};
}

const FakeBundles::Info* FakeBundles::find(const std::string& path) const {
    const auto found = bundles_.find(path);
    return found == bundles_.end() ? nullptr : &found->second;
}

}  // namespace corvane

using CurrentBundles = corvane::Current<corvane::FakeBundles>;

@implementation NSBundle {
    std::string _path;
    corvane::FakeBundles::Info _info;
}

+ (NSBundle*)mainBundle {
    NSBundle* bundle = [[NSBundle alloc] init];
    if (const auto* fake = CurrentBundles::get()) {
        bundle->_path = fake->mainPath();
        bundle->_info = *fake->find(fake->mainPath());
    } else {
        bundle->_path = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    }
    return bundle;
}

+ (instancetype)bundleWithPath:(NSString*)path {
    const auto* fake = CurrentBundles::get();
    const auto* info = fake == nullptr ? nullptr : fake->find(corvane::textOf(path));
    if (info == nullptr) {
        return nil;
    }
    NSBundle* bundle = [[NSBundle alloc] init];
    bundle->_path = corvane::textOf(path);
    bundle->_info = *info;
    return bundle;
}

- (NSString*)bundlePath {
    return corvane::stringOf(_path);
}

- (NSString*)bundleIdentifier {
    return corvane::objectOf(_info.identifier);
}

- (NSString*)pathForResource:(NSString*)name ofType:(NSString*)ext {
    const std::string file = ext == nil ? corvane::textOf(name)
                                        : fmt::format("{}.{}", corvane::textOf(name), corvane::textOf(ext));
    const auto path = std::filesystem::path(_path) / "Contents/Resources" / file;
    return std::filesystem::exists(path) ? corvane::stringOf(path.native()) : nil;
}

- (id)objectForInfoDictionaryKey:(NSString*)key {
    if ([key isEqualToString:@"CFBundleIconFile"] && _info.iconFile) {
        return _info.isIconFileText ? corvane::stringOf(*_info.iconFile) : @1;
    }
    if ([key isEqualToString:@"CFBundleDisplayName"] && _info.displayName) {
        return _info.isDisplayNameText ? corvane::stringOf(*_info.displayName) : @1;
    }
    return [key isEqualToString:@"CFBundleName"] ? corvane::objectOf(_info.name) : nil;
}

@end
