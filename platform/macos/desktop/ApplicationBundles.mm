#include "platform/macos/desktop/ApplicationBundles.h"

#include <cstddef>
#include <map>
#include <utility>

#import <Foundation/Foundation.h>

#include "platform/ApplicationIdentifier.h"
#include "platform/OneLine.h"
#include "platform/macos/NSStringText.h"
#include "platform/macos/desktop/UserFolders.h"

namespace corvane {

namespace {

/// Of folders within folders.
constexpr int deepest = 2;
/// Far more than anybody has; the rest is left out.
constexpr std::size_t mostApplications = 4096;
/// In bytes; longer ones are left out.
constexpr std::size_t longestIdentifier = 1024;

using ApplicationsByIdentifier = std::map<std::string, InstalledApplication>;

/// What the bundle says of itself; "" where it says nothing.
std::string ownNameOf(NSBundle* bundle) {
    for (NSString* key in @[ @"CFBundleDisplayName", @"CFBundleName" ]) {
        id name = [bundle objectForInfoDictionaryKey:key];
        if ([name isKindOfClass:[NSString class]] && [name length] > 0) {
            return oneLine(textOf(name));
        }
    }
    return "";
}

/// As the Finder shows it, but never with the extension, which users may have it show.
std::string fileNameOf(NSString* path) {
    NSString* name = [NSFileManager.defaultManager displayNameAtPath:path];
    return oneLine(textOf([name hasSuffix:@".app"] ? name.stringByDeletingPathExtension : name));
}

/// The path of its image; "" when it has none of its own.
std::string iconOf(NSBundle* bundle) {
    id file = [bundle objectForInfoDictionaryKey:@"CFBundleIconFile"];
    if (![file isKindOfClass:[NSString class]]) {
        return "";
    }
    NSString* name = [file hasSuffix:@".icns"] ? [file stringByDeletingPathExtension] : file;
    return textOf([bundle pathForResource:name ofType:@"icns"]);
}

void addBundle(NSString* path, ApplicationsByIdentifier& found) {
    NSBundle* bundle = [NSBundle bundleWithPath:path];
    const std::string identifier = textOf(bundle.bundleIdentifier);
    const std::string ownName = ownNameOf(bundle);
    const std::string name = ownName.empty() ? fileNameOf(path) : ownName;
    const bool isFit = !identifier.empty() && identifier.size() <= longestIdentifier && !name.empty() &&
                       identifier != applicationIdentifier && found.size() < mostApplications;
    if (isFit) {
        found.try_emplace(identifier, InstalledApplication{identifier, name, iconOf(bundle)});
    }
}

void addFolder(NSString* folder, int depth, ApplicationsByIdentifier& found) {
    // nil for a file.
    for (NSString* name in [NSFileManager.defaultManager contentsOfDirectoryAtPath:folder error:nil]) {
        @autoreleasepool {
            if ([name hasPrefix:@"."]) {
                continue;
            }
            NSString* path = [folder stringByAppendingPathComponent:name];
            if ([name hasSuffix:@".app"]) {
                addBundle(path, found);
            } else if (depth < deepest) {
                addFolder(path, depth + 1, found);
            }
        }
    }
}

}  // namespace

InstalledApplications::List applicationsIn(const std::vector<std::string>& folders) {
    ApplicationsByIdentifier found;
    @autoreleasepool {
        for (const std::string& folder : folders) {
            addFolder(stringOf(folder), 0, found);
        }
    }
    InstalledApplications::List list;
    for (auto& [identifier, application] : found) {
        list.push_back(std::move(application));
    }
    return list;
}

std::vector<std::string> applicationFolders() {
    return {(UserFolders::home() / "Applications").string(), "/Applications", "/System/Applications"};
}

}  // namespace corvane
