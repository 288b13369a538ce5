#include "tests/platform/macos/fakes/IOKit/IoObjects.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "tests/platform/macos/fakes/Leftovers.h"

namespace corvane {

namespace {

class IoNames {
public:
    io_object_t add(IoObjectKind kind) {
        const std::lock_guard lock(mutex_);
        kinds_.emplace(++last_, kind);
        return last_;
    }

    bool has(io_object_t object, IoObjectKind kind) {
        const std::lock_guard lock(mutex_);
        const auto found = kinds_.find(object);
        return found != kinds_.end() && found->second == kind;
    }

    bool remove(io_object_t object) {
        const std::lock_guard lock(mutex_);
        return kinds_.erase(object) != 0;
    }

    std::vector<std::string> descriptions() {
        const std::lock_guard lock(mutex_);
        std::vector<std::string> all;
        for (const auto& [name, kind] : kinds_) {
            all.emplace_back(kind == IoObjectKind::service ? "a service" : "a connection");
        }
        return all;
    }

private:
    std::mutex mutex_;
    /// Ports' names look like this. None is used twice.
    io_object_t last_ = 0x1003;
    std::map<io_object_t, IoObjectKind> kinds_;
};

/// Never destroyed: a test program's globals may end later.
IoNames& ioNames() {
    static auto& names = *std::make_unique<IoNames>().release();
    return names;
}

const bool watchesIoLeftovers = [] {
    failOnLeftovers("IOKit objects", [] { return ioNames().descriptions(); });
    return true;
}();

kern_return_t giveIoObjectBack(io_object_t object, IoObjectKind kind, const char* function) {
    if (!ioNames().has(object, kind)) {
        ADD_FAILURE() << function << " of what is none";
        return kIOReturnBadArgument;
    }
    ioNames().remove(object);
    return kIOReturnSuccess;
}

}  // namespace

io_object_t makeIoObject(IoObjectKind kind) {
    return ioNames().add(kind);
}

bool isIoObject(io_object_t object, IoObjectKind kind) {
    return ioNames().has(object, kind);
}

}  // namespace corvane

kern_return_t IOObjectRelease(io_object_t object) {
    return corvane::giveIoObjectBack(object, corvane::IoObjectKind::service, "IOObjectRelease");
}

kern_return_t IOServiceClose(io_connect_t connection) {
    return corvane::giveIoObjectBack(connection, corvane::IoObjectKind::connection, "IOServiceClose");
}
