// Files and volumes. From: Apple's public documentation of NSFileManager and NSURL's resource keys.
#pragma once

#import <Foundation/NSURL.h>

FOUNDATION_EXPORT NSURLResourceKey const NSURLVolumeNameKey;
FOUNDATION_EXPORT NSURLResourceKey const NSURLVolumeIsInternalKey;
FOUNDATION_EXPORT NSURLResourceKey const NSURLVolumeIsBrowsableKey;

typedef NS_OPTIONS(NSUInteger, NSVolumeEnumerationOptions) {
    NSVolumeEnumerationSkipHiddenVolumes = 1UL << 1,
};

@interface NSFileManager : NSObject
// May be used on any thread.
@property(class, readonly, strong) NSFileManager* defaultManager;
// nil when the system does not tell.
- (NSArray<NSURL*>*)mountedVolumeURLsIncludingResourceValuesForKeys:(NSArray<NSURLResourceKey>*)propertyKeys
                                                            options:(NSVolumeEnumerationOptions)options;
- (BOOL)fileExistsAtPath:(NSString*)path;
// Names, not paths; nil with an error.
- (NSArray<NSString*>*)contentsOfDirectoryAtPath:(NSString*)path error:(NSError**)error;
// As the user sees it; may have the file's extension.
- (NSString*)displayNameAtPath:(NSString*)path;
- (BOOL)trashItemAtURL:(NSURL*)url resultingItemURL:(NSURL**)outResultingURL error:(NSError**)error;
@end
