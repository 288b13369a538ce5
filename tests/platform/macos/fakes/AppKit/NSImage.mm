#include "platform/macos/NSStringText.h"
#import "tests/platform/macos/fakes/AppKit/AppKitObjects.h"

const NSFontWeight NSFontWeightSemibold = 0.3;

@implementation NSImageSymbolConfiguration

+ (instancetype)configurationWithPointSize:(CGFloat)pointSize weight:(NSFontWeight)weight {
    NSImageSymbolConfiguration* const configuration = [[self alloc] init];
    configuration.pointSize = pointSize;
    configuration.weight = weight;
    return configuration;
}

@end

@implementation NSImage {
    BOOL _isTemplate;
}

+ (instancetype)imageWithSystemSymbolName:(NSString*)name accessibilityDescription:(NSString*)description {
    if (!corvane::FakeMenuBar::State::shared().symbols.contains(corvane::textOf(name))) {
        return nil;
    }
    NSImage* const image = [[self alloc] init];
    image.name = name;
    image.accessibilityDescription = description;
    return image;
}

- (NSImage*)imageWithSymbolConfiguration:(NSImageSymbolConfiguration*)configuration {
    NSImage* const image = [[NSImage alloc] init];
    image.name = self.name;
    image.accessibilityDescription = self.accessibilityDescription;
    image.symbolConfiguration = configuration;
    return image;
}

- (BOOL)isTemplate {
    return _isTemplate;
}

- (void)setTemplate:(BOOL)isTemplate {
    _isTemplate = isTemplate;
}

@end
