#pragma once

// Of the Objective-C runtime, as clang's documentation of automatic reference counting describes them, under
// its names. NOLINTBEGIN(readability-identifier-naming)
extern "C" {
void* objc_autoreleasePoolPush(void);
void objc_autoreleasePoolPop(void* pool);
}
// NOLINTEND(readability-identifier-naming)

namespace corvane {

/// What is autoreleased while this lives goes with it, for C++ that calls Objective-C: Dispatch has no pool
/// on the main thread, and AppKit's goes with the next event, which may be hours away. One thread.
class AutoreleasePool {
public:
    AutoreleasePool() = default;
    AutoreleasePool(const AutoreleasePool&) = delete;
    AutoreleasePool& operator=(const AutoreleasePool&) = delete;
    ~AutoreleasePool() { objc_autoreleasePoolPop(pool_); }

private:
    void* pool_ = objc_autoreleasePoolPush();
};

}  // namespace corvane
