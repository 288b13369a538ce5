#pragma once
#import <Foundation/Foundation.h>

// AppKit's public documentation: weights of type are numbers behind exported symbols.
typedef CGFloat NSFontWeight;
FOUNDATION_EXPORT const NSFontWeight NSFontWeightSemibold;

// AppKit's public documentation, macOS 11 and later. Points are those of type.
@interface NSImageSymbolConfiguration : NSObject
+ (instancetype)configurationWithPointSize:(CGFloat)pointSize weight:(NSFontWeight)weight;
@end

// AppKit's public documentation; symbols need macOS 11. Nil when the system has no such symbol.
@interface NSImage : NSObject
+ (instancetype)imageWithSystemSymbolName:(NSString*)name accessibilityDescription:(NSString*)description;
- (NSImage*)imageWithSymbolConfiguration:(NSImageSymbolConfiguration*)configuration;
// The property `template`, a name that C++ takes for itself.
- (BOOL)isTemplate;
- (void)setTemplate:(BOOL)isTemplate;
@end
