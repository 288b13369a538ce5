#include <vector>

#include <fmt/format.h>

#include "tests/platform/macos/fakes/objc/ClassTable.h"
#include "tests/platform/macos/fakes/objc/Complaints.h"
#include "tests/platform/macos/fakes/objc/Objects.h"
#include "tests/platform/macos/fakes/objc/Runtime.h"

/// Each thread's stack of pools. Without a pool an object waits for the end of its thread, as on a Mac; since
/// that may never come, the test fails.

using namespace corvane::objc;

namespace {

class PoolStack {
public:
    PoolStack() = default;
    PoolStack(const PoolStack&) = delete;
    PoolStack& operator=(const PoolStack&) = delete;
    ~PoolStack() { drainTo(0); }

    std::size_t push() {
        marks_.push_back(waiting_.size());
        return marks_.size();
    }

    void pop(std::size_t pool) {
        if (pool == 0 || pool > marks_.size()) {
            fatal("an autorelease pool is left that is not on this thread's stack");
        }
        drainTo(marks_[pool - 1]);
        marks_.resize(pool - 1);
    }

    void add(id object) {
        if (marks_.empty()) {
            complain(fmt::format("autoreleased without a pool: {}", class_getName(object_getClass(object))));
        }
        waiting_.push_back(object);
    }

private:
    /// Ends of objects may autorelease others.
    void drainTo(std::size_t mark) {
        while (waiting_.size() > mark) {
            const id object = waiting_.back();
            waiting_.pop_back();
            objc_release(object);
        }
    }

    std::vector<id> waiting_;
    std::vector<std::size_t> marks_;
};

PoolStack& pools() {
    static thread_local PoolStack stack;
    return stack;
}

}  // namespace

extern "C" {
id objc_autoreleaseReturnValue(id object);
id objc_retainAutorelease(id object);
id objc_retainAutoreleaseReturnValue(id object);
id objc_retainAutoreleasedReturnValue(id object);
id objc_unsafeClaimAutoreleasedReturnValue(id object);
}

// A pool is named by its place in the stack.
void* objc_autoreleasePoolPush(void) {
    return reinterpret_cast<void*>(pools().push());  // NOLINT(performance-no-int-to-ptr)
}

void objc_autoreleasePoolPop(void* pool) {
    pools().pop(reinterpret_cast<std::size_t>(pool));
}

id objc_autorelease(id object) {
    if (isCounted(object)) {
        pools().add(object);
    }
    return object;
}

// A Mac may hand a value over without the pool; nothing may rely on that.
id objc_autoreleaseReturnValue(id object) {
    return objc_autorelease(object);
}

id objc_retainAutorelease(id object) {
    return objc_autorelease(objc_retain(object));
}

id objc_retainAutoreleaseReturnValue(id object) {
    return objc_retainAutorelease(object);
}

id objc_retainAutoreleasedReturnValue(id object) {
    return objc_retain(object);
}

id objc_unsafeClaimAutoreleasedReturnValue(id object) {
    return object;
}
