#pragma once

#include <functional>
#include <memory>

#import <Foundation/Foundation.h>

#include "platform/Lifetime.h"
#include "platform/MainLoopExit.h"
#include "platform/SerialQueue.h"

namespace corvane {

/// Runs work on the main loop after each of the system's notices of one name, whichever thread posts them.
/// Main loop.
class MainLoopNotice {
public:
    /// `mainLoop` outlives the notice.
    MainLoopNotice(NSNotificationCenter* centre, NSNotificationName name, SerialQueue& mainLoop,
                   std::function<void()> work);
    MainLoopNotice(const MainLoopNotice&) = delete;
    MainLoopNotice& operator=(const MainLoopNotice&) = delete;
    ~MainLoopNotice();

private:
    NSNotificationCenter* centre_;
    id<NSObject> token_;
    std::shared_ptr<MainLoopExit> exit_;
    Lifetime lifetime_;
};

}  // namespace corvane
