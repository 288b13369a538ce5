#include "platform/macos/desktop/SteadyActivity.h"

#import <Foundation/Foundation.h>

namespace corvane {

struct SteadyActivity::Token {
    id<NSObject> activity = [NSProcessInfo.processInfo
        beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                          reason:@"Corvane watches over the fans and keeps the Mac awake"];
};

SteadyActivity::SteadyActivity() : token_(std::make_unique<Token>()) {}

SteadyActivity::~SteadyActivity() {
    [NSProcessInfo.processInfo endActivity:token_->activity];
}

}  // namespace corvane
