#include <cstddef>
#include <mutex>

#include "tests/platform/macos/fakes/objc/Complaints.h"
#include "tests/platform/macos/fakes/objc/Runtime.h"

/// What the compiler calls for strong variables and for properties that it makes itself.

extern "C" {
void objc_storeStrong(id* place, id object);
id objc_getProperty(id self, SEL selector, std::ptrdiff_t offset, bool atomic);
void objc_setProperty(id self, SEL selector, std::ptrdiff_t offset, id value, bool atomic, bool copies);
void objc_setProperty_atomic(id self, SEL selector, id value, std::ptrdiff_t offset);
void objc_setProperty_nonatomic(id self, SEL selector, id value, std::ptrdiff_t offset);
void objc_setProperty_atomic_copy(id self, SEL selector, id value, std::ptrdiff_t offset);
void objc_setProperty_nonatomic_copy(id self, SEL selector, id value, std::ptrdiff_t offset);
void objc_enumerationMutation(id collection);
}

namespace {

std::mutex& propertyMutex() {
    static auto& mutex = *new std::mutex;
    return mutex;
}

id& placeAt(id self, std::ptrdiff_t offset) {
    return *reinterpret_cast<id*>(reinterpret_cast<char*>(self) + offset);
}

id copyOf(id object) {
    static const SEL copy = sel_registerName("copy");
    if (object == nullptr) {
        return nullptr;
    }
    const IMP code = class_getMethodImplementation(object_getClass(object), copy);
    return reinterpret_cast<id (*)(id, SEL)>(code)(object, copy);
}

/// Takes over a reference.
void setOwned(id& place, id owned) {
    id old = nullptr;
    {
        const std::lock_guard lock(propertyMutex());
        old = place;
        place = owned;
    }
    objc_release(old);
}

}  // namespace

void objc_storeStrong(id* place, id object) {
    const id old = *place;
    *place = objc_retain(object);
    objc_release(old);
}

id objc_getProperty(id self, SEL /*selector*/, std::ptrdiff_t offset, bool /*atomic*/) {
    id value = nullptr;
    {
        const std::lock_guard lock(propertyMutex());
        value = objc_retain(placeAt(self, offset));
    }
    return objc_autorelease(value);
}

void objc_setProperty(id self, SEL /*selector*/, std::ptrdiff_t offset, id value, bool /*atomic*/,
                      bool copies) {
    setOwned(placeAt(self, offset), copies ? copyOf(value) : objc_retain(value));
}

void objc_setProperty_atomic(id self, SEL selector, id value, std::ptrdiff_t offset) {
    objc_setProperty(self, selector, offset, value, true, false);
}

void objc_setProperty_nonatomic(id self, SEL selector, id value, std::ptrdiff_t offset) {
    objc_setProperty(self, selector, offset, value, false, false);
}

void objc_setProperty_atomic_copy(id self, SEL selector, id value, std::ptrdiff_t offset) {
    objc_setProperty(self, selector, offset, value, true, true);
}

void objc_setProperty_nonatomic_copy(id self, SEL selector, id value, std::ptrdiff_t offset) {
    objc_setProperty(self, selector, offset, value, false, true);
}

void objc_enumerationMutation(id collection) {
    corvane::objc::fatal(std::string(class_getName(object_getClass(collection))) +
                         " was changed while it was gone through");
}
