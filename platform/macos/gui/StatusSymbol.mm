#import "platform/macos/gui/StatusSymbol.h"

namespace corvane {

namespace {

/// Points.
constexpr CGFloat symbolSize = 15;

NSString* symbolName(StatusImage image) {
    return image == StatusImage::gauge100 ? @"gauge.with.dots.needle.bottom.100percent"
                                          : @"gauge.with.dots.needle.bottom.50percent";
}

NSImage* systemSymbol(NSString* name) {
    return [NSImage imageWithSystemSymbolName:name accessibilityDescription:@"Corvane"];
}

}  // namespace

NSImage* statusSymbol(StatusImage image) {
    NSImageSymbolConfiguration* const configuration =
        [NSImageSymbolConfiguration configurationWithPointSize:symbolSize weight:NSFontWeightSemibold];
    NSImage* symbol = [systemSymbol(symbolName(image)) imageWithSymbolConfiguration:configuration];
    if (!symbol) {
        symbol = systemSymbol(@"speedometer");
    }
    [symbol setTemplate:YES];
    return symbol;
}

}  // namespace corvane
