#include "tests/platform/macos/fakes/CoreFoundation/CfObject.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <mutex>

#include <fmt/format.h>

#include "tests/platform/macos/fakes/Leftovers.h"

namespace corvane {

namespace {

[[noreturn]] void endProgram(const std::string& why) {
    fmt::print(stderr, "Core Foundation: {}\n", why);
    std::abort();
}

struct CfObject {
    CfValue value;
    std::size_t references = 1;
    /// Made by the compiler: counts no references and never ends.
    bool isConstant = false;
};

/// Every object there ever was. The dead stay, so that a use after the end is never a use of another object
/// at the same place.
class CfHeap {
public:
    CFTypeRef add(CfValue value, bool isConstant) {
        auto object = std::make_unique<CfObject>();
        object->value = std::move(value);
        object->isConstant = isConstant;
        const std::lock_guard lock(mutex_);
        CFTypeRef name = object.get();
        objects_.emplace(name, std::move(object));
        return name;
    }

    void retain(CFTypeRef name) {
        const std::lock_guard lock(mutex_);
        ++living(name, "retained").references;
    }

    void release(CFTypeRef name) {
        // Ends after the lock: it releases what it holds.
        CfValue last;
        const std::lock_guard lock(mutex_);
        CfObject& object = living(name, "released");
        if (!object.isConstant && --object.references == 0) {
            last = std::exchange(object.value, {});
        }
    }

    const CfValue& value(CFTypeRef name) {
        const std::lock_guard lock(mutex_);
        return living(name, "used").value;
    }

    std::vector<std::string> descriptionsOfLiving() {
        const std::lock_guard lock(mutex_);
        std::vector<std::string> all;
        for (const auto& [name, object] : objects_) {
            if (!object->isConstant && object->value.index() != 0) {
                all.push_back(describe(object->value));
            }
        }
        return all;
    }

private:
    CfObject& living(CFTypeRef name, const char* what) {
        const auto found = objects_.find(name);
        const char* problem = name == nullptr           ? "NULL"
                              : found == objects_.end() ? "Something that is no Core Foundation object"
                              : found->second->value.index() == 0 ? "A Core Foundation object that has ended"
                                                                  : nullptr;
        if (problem != nullptr) {
            endProgram(fmt::format("{} is {}.", problem, what));
        }
        return *found->second;
    }

    static std::string describe(const CfValue& value) {
        if (const auto* text = std::get_if<std::string>(&value)) {
            return fmt::format("the string \"{}\"", *text);
        }
        constexpr std::array kinds = {"",         "",         "a Boolean",    "a number",
                                      "a number", "an array", "a dictionary", "a port or run loop source"};
        return kinds.at(value.index());
    }

    std::mutex mutex_;
    std::map<CFTypeRef, std::unique_ptr<CfObject>> objects_;
};

/// Never destroyed: constants and tests' globals may end later.
CfHeap& cfHeap() {
    static CfHeap& heap = *std::make_unique<CfHeap>().release();
    return heap;
}

const bool watchesLeftovers = [] {
    failOnLeftovers("Core Foundation objects", [] { return cfHeap().descriptionsOfLiving(); });
    return true;
}();

}  // namespace

CfReference makeCfObject(CfValue value) {
    return CfReference(cfHeap().add(std::move(value), false));
}

CFTypeRef makeCfConstant(CfValue value) {
    return cfHeap().add(std::move(value), true);
}

CfReference retainedCf(CFTypeRef object) {
    cfHeap().retain(object);
    return CfReference(object);
}

const CfValue& cfValueOf(CFTypeRef object) {
    return cfHeap().value(object);
}

bool areEqualCf(CFTypeRef one, CFTypeRef other) {
    return one == other || cfValueOf(one) == cfValueOf(other);
}

void endForWrongCfType() {
    endProgram("An object is used as one of another type.");
}

}  // namespace corvane

void CFRelease(CFTypeRef object) {
    corvane::cfHeap().release(object);
}
