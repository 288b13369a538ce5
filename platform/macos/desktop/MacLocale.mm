#include "platform/macos/desktop/MacLocale.h"

#import <Foundation/Foundation.h>

#include "platform/macos/NSStringText.h"

namespace corvane {

std::vector<std::string> MacLocale::preferredLanguages() const {
    std::vector<std::string> languages;
    for (NSString* language in NSLocale.preferredLanguages) {
        languages.push_back(textOf(language));
    }
    return languages;
}

}  // namespace corvane
