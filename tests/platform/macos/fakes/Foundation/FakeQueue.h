#pragma once

#include <functional>

#include "tests/platform/macos/fakes/dispatch/FakeDispatch.h"

namespace corvane {

/// A queue of a framework's own: what it runs is not on the main thread. On the virtual time of the Dispatch
/// there is.
class FakeQueue {
public:
    void async(std::function<void()> work);

private:
    VirtualQueue queue_{FakeDispatch::current().time()};
};

}  // namespace corvane
