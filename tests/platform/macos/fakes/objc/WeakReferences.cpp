#include "tests/platform/macos/fakes/objc/WeakReferences.h"

#include <mutex>
#include <unordered_map>
#include <unordered_set>

#include "tests/platform/macos/fakes/objc/Objects.h"
#include "tests/platform/macos/fakes/objc/Runtime.h"

/// What the compiler calls for variables declared __weak.

namespace corvane::objc {

namespace {

struct WeakReferences {
    std::mutex mutex;
    std::unordered_map<id, std::unordered_set<id*>> places;
};

WeakReferences& weakReferences() {
    static auto& all = *new WeakReferences;
    return all;
}

/// With the lock held.
void forget(id* place) {
    const auto found = weakReferences().places.find(*place);
    if (found == weakReferences().places.end()) {
        return;
    }
    found->second.erase(place);
    if (found->second.empty()) {
        weakReferences().places.erase(found);
    }
}

/// With the lock held. An object that is about to go is answered by null.
void remember(id* place, id object) {
    const id kept = retainUnlessGone(object);
    *place = kept;
    if (isCounted(kept)) {
        weakReferences().places[kept].insert(place);
    }
}

}  // namespace

void clearWeakReferences(id object) {
    const std::lock_guard lock(weakReferences().mutex);
    const auto found = weakReferences().places.find(object);
    if (found == weakReferences().places.end()) {
        return;
    }
    for (id* place : found->second) {
        *place = nullptr;
    }
    weakReferences().places.erase(found);
}

}  // namespace corvane::objc

using namespace corvane::objc;

extern "C" {
id objc_storeWeak(id* place, id object);
id objc_initWeak(id* place, id object);
void objc_destroyWeak(id* place);
id objc_loadWeakRetained(id* place);
id objc_loadWeak(id* place);
void objc_copyWeak(id* to, id* from);
void objc_moveWeak(id* to, id* from);
}

id objc_storeWeak(id* place, id object) {
    id kept = nullptr;
    {
        const std::lock_guard lock(weakReferences().mutex);
        forget(place);
        remember(place, object);
        kept = *place;
    }
    objc_release(kept);
    return kept;
}

id objc_initWeak(id* place, id object) {
    *place = nullptr;
    return objc_storeWeak(place, object);
}

void objc_destroyWeak(id* place) {
    objc_storeWeak(place, nullptr);
}

id objc_loadWeakRetained(id* place) {
    const std::lock_guard lock(weakReferences().mutex);
    return retainUnlessGone(*place);
}

id objc_loadWeak(id* place) {
    return objc_autorelease(objc_loadWeakRetained(place));
}

void objc_copyWeak(id* to, id* from) {
    const id object = objc_loadWeakRetained(from);
    objc_initWeak(to, object);
    objc_release(object);
}

void objc_moveWeak(id* to, id* from) {
    objc_copyWeak(to, from);
    objc_destroyWeak(from);
}
