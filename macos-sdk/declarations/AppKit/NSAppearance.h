#pragma once
#import <Foundation/Foundation.h>

// AppKit's public documentation: names are texts behind exported symbols.
typedef NSString* NSAppearanceName;
FOUNDATION_EXPORT NSAppearanceName const NSAppearanceNameAqua;
FOUNDATION_EXPORT NSAppearanceName const NSAppearanceNameDarkAqua;

// AppKit's public documentation. Nil when none of the names comes near the appearance.
@interface NSAppearance : NSObject
- (NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray<NSAppearanceName>*)appearances;
@end
