#include "platform/macos/desktop/MainLoopNotice.h"

#include <utility>

namespace corvane {

MainLoopNotice::MainLoopNotice(NSNotificationCenter* centre, NSNotificationName name, SerialQueue& mainLoop,
                               std::function<void()> work)
    : centre_(centre), exit_(std::make_shared<MainLoopExit>(mainLoop)) {
    // Shared, for the thread that posts may drop it last.
    const auto exit = exit_;
    const SerialQueue::Work tell = lifetime_.bound(std::move(work));
    token_ = [centre_ addObserverForName:name
                                  object:nil
                                   queue:nil
                              usingBlock:^(NSNotification* /*notice*/) {
                                exit->toMainLoop(tell);
                              }];
}

MainLoopNotice::~MainLoopNotice() {
    exit_->close();
    [centre_ removeObserver:token_];
}

}  // namespace corvane
