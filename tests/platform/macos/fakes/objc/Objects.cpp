#include "tests/platform/macos/fakes/objc/Objects.h"

#include <algorithm>
#include <cstdlib>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <new>

#include <fmt/format.h>

#include "tests/platform/macos/fakes/objc/ClassTable.h"
#include "tests/platform/macos/fakes/objc/Complaints.h"
#include "tests/platform/macos/fakes/objc/LiveObjects.h"
#include "tests/platform/macos/fakes/objc/Runtime.h"
#include "tests/platform/macos/fakes/objc/WeakReferences.h"

#if defined(__SANITIZE_ADDRESS__)
#define CORVANE_POISON 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define CORVANE_POISON 1
#endif
#endif
#ifdef CORVANE_POISON
#include <sanitizer/asan_interface.h>
#endif

namespace corvane::objc {

namespace {

constexpr long immortal = -1;
/// Enough to tell who uses an object after its end; a bound, since tests go through whole days.
constexpr std::size_t maximumGraves = 20'000;

/// What lies before each counted object.
struct alignas(std::max_align_t) Header {
    long references = 1;
    /// Retains while it is deallocated: what its end calls may retain it, but not keep it.
    long borrowed = 0;
    std::size_t size = 0;
};

struct Objects {
    std::mutex mutex;
    std::map<Class, std::size_t> live;
    std::deque<Header*> graves;
    std::map<Class, std::unique_ptr<objc_class>> classesOfGraves;
};

Objects& objects() {
    static auto& all = *new Objects;
    return all;
}

Header& headerOf(id object) {
    return *(reinterpret_cast<Header*>(object) - 1);
}

id objectOf(Header* header) {
    return reinterpret_cast<id>(header + 1);
}

bool isBuried(id object) {
    return (object->isa->info & isGrave) != 0;
}

void runHook(id object, Class aClass, SEL selector) {
    if (const Slot* slot = ownMethod(aClass, selector)) {
        reinterpret_cast<void (*)(id, SEL)>(slot->code)(object, selector);
    }
}

void constructMembers(id object, Class aClass) {
    static const SEL construct = sel_registerName(".cxx_construct");
    if (aClass->super != nullptr) {
        constructMembers(object, aClass->super);
    }
    runHook(object, aClass, construct);
}

void destroyMembers(id object) {
    static const SEL destroy = sel_registerName(".cxx_destruct");
    for (Class each = object->isa; each != nullptr; each = each->super) {
        runHook(object, each, destroy);
    }
}

Class classOfGraves(Class aClass) {
    auto& known = objects().classesOfGraves[aClass];
    if (known == nullptr) {
        known = std::make_unique<objc_class>();
        known->name = aClass->name;
        known->info = isGrave;
    }
    return known.get();
}

void freeGrave(Header* header) {
#ifdef CORVANE_POISON
    __asan_unpoison_memory_region(header, sizeof *header + header->size);
#endif
    std::free(header);
}

/// The class pointer stays readable, so that a message finds out.
void bury(Header* header) {
    const id object = objectOf(header);
    object->isa = classOfGraves(object->isa);
#ifdef CORVANE_POISON
    __asan_poison_memory_region(object + 1, header->size - sizeof *object);
#endif
    objects().graves.push_back(header);
    if (objects().graves.size() > maximumGraves) {
        freeGrave(objects().graves.front());
        objects().graves.pop_front();
    }
}

[[noreturn]] void refuse(const char* what, id object) {
    fatal(fmt::format("{} of an object that is no more, once {}", what, object->isa->name));
}

void addReference(id object) {
    Header& header = headerOf(object);
    if (header.references == 0) {
        ++header.borrowed;
    } else if (header.references != immortal) {
        ++header.references;
    }
}

/// Whether that was the last reference.
bool dropReference(id object) {
    const std::lock_guard lock(objects().mutex);
    if (isBuried(object)) {
        refuse("release", object);
    }
    long& references = headerOf(object).references;
    if (references == immortal) {
        return false;
    }
    if (references > 0) {
        return --references == 0;
    }
    if (--headerOf(object).borrowed < 0) {
        fatal(fmt::format("one release too many of {}, which is being deallocated", object->isa->name));
    }
    return false;
}

}  // namespace

bool isCounted(id object) {
    static const Class literal = objc_getClass("NSConstantString");
    static const Class protocol = objc_getClass("Protocol");
    if (object == nullptr || isTinyString(object)) {
        return false;
    }
    const Class isa = object->isa;
    return isa != literal && isa != protocol && (isa->info & (isMetaclass | isStatic)) == 0;
}

id retainUnlessGone(id object) {
    if (!isCounted(object)) {
        return object;
    }
    const std::lock_guard lock(objects().mutex);
    if (isBuried(object) || headerOf(object).references == 0) {
        return nullptr;
    }
    addReference(object);
    return object;
}

std::vector<std::string> liveObjects() {
    const std::lock_guard lock(objects().mutex);
    std::vector<std::string> classes;
    for (const auto& [aClass, count] : objects().live) {
        classes.insert(classes.end(), count, aClass->name);
    }
    std::ranges::sort(classes);
    return classes;
}

void makeImmortal(id object) {
    if (!isCounted(object)) {
        return;
    }
    const std::lock_guard lock(objects().mutex);
    long& references = headerOf(object).references;
    if (references != immortal) {
        references = immortal;
        --objects().live[object->isa];
    }
}

void emptyGraves() {
    const std::lock_guard lock(objects().mutex);
    for (Header* each : objects().graves) {
        freeGrave(each);
    }
    objects().graves.clear();
}

}  // namespace corvane::objc

using namespace corvane::objc;

id class_createInstance(Class aClass, std::size_t extraBytes) {
    const std::size_t size = static_cast<std::size_t>(aClass->size) + extraBytes;
    void* memory = std::calloc(1, sizeof(Header) + size);
    if (memory == nullptr) {
        fatal("out of memory");
    }
    auto* header = new (memory) Header{1, 0, size};
    const id object = objectOf(header);
    object->isa = aClass;
    {
        const std::lock_guard lock(objects().mutex);
        ++objects().live[aClass];
    }
    constructMembers(object, aClass);
    return object;
}

void object_dispose(id object) {
    destroyMembers(object);
    const std::lock_guard lock(objects().mutex);
    if (headerOf(object).borrowed != 0) {
        fatal(fmt::format("retained and kept while it is deallocated: {}", object->isa->name));
    }
    --objects().live[object->isa];
    bury(&headerOf(object));
}

id objc_retain(id object) {
    if (!isCounted(object)) {
        return object;
    }
    const std::lock_guard lock(objects().mutex);
    if (isBuried(object)) {
        refuse("retain", object);
    }
    addReference(object);
    return object;
}

void objc_release(id object) {
    static const SEL dealloc = sel_registerName("dealloc");
    if (!isCounted(object) || !dropReference(object)) {
        return;
    }
    clearWeakReferences(object);
    reinterpret_cast<void (*)(id, SEL)>(findMethod(object->isa, dealloc)->code)(object, dealloc);
}
