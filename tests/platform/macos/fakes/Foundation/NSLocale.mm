#import <Foundation/Foundation.h>

#include "platform/macos/NSStringText.h"
#include "tests/platform/macos/fakes/Foundation/FakeLocale.h"

@implementation NSLocale

+ (NSArray<NSString*>*)preferredLanguages {
    NSMutableArray<NSString*>* languages = [NSMutableArray array];
    if (const auto* fake = corvane::Current<corvane::FakeLocale>::get()) {
        for (const std::string& language : fake->languages()) {
            [languages addObject:corvane::stringOf(language)];
        }
    }
    return languages;
}

@end
