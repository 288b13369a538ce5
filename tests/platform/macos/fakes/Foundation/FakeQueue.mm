#include "tests/platform/macos/fakes/Foundation/FakeQueue.h"

#include <utility>

namespace corvane {

void FakeQueue::async(std::function<void()> work) {
    FakeDispatch::current().async(queue_, [work = std::move(work)] {
        @autoreleasepool {
            work();
        }
    });
}

}  // namespace corvane
