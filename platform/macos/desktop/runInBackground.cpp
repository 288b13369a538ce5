#include "platform/macos/desktop/runInBackground.h"

#include <memory>
#include <utility>

#include <dispatch/dispatch.h>

namespace corvane {

namespace {

using BackgroundWork = std::function<void()>;

void runOwned(void* context) {
    const std::unique_ptr<BackgroundWork> work(static_cast<BackgroundWork*>(context));
    (*work)();
}

}  // namespace

void runInBackground(std::function<void()> work) {
    dispatch_async_f(dispatch_get_global_queue(QOS_CLASS_UTILITY, 0),
                     std::make_unique<BackgroundWork>(std::move(work)).release(), runOwned);
}

}  // namespace corvane
