#include <fmt/format.h>

#include "tests/platform/macos/fakes/objc/ClassTable.h"
#include "tests/platform/macos/fakes/objc/Complaints.h"
#include "tests/platform/macos/fakes/objc/Runtime.h"

/// What the compiler calls to send a message.

using namespace corvane::objc;

namespace {

struct Super {
    id receiver;
    /// The class above the one whose method sends.
    Class aClass;
};

/// The compiler itself makes zeroes of what does not fit into one register.
void* answerOfNil() {
    return nullptr;
}

/// Lets the class add the method now, as it may when it hears of a selector for the first time.
bool resolveMethod(Class aClass, SEL selector) {
    static const SEL resolve = sel_registerName("resolveInstanceMethod:");
    const IMP code = class_getMethodImplementation(aClass->isa, resolve);
    using Resolve = BOOL (*)(Class, SEL, SEL);
    return code != nullptr && reinterpret_cast<Resolve>(code)(aClass, resolve, selector);
}

Slot* methodFor(Class aClass, SEL selector) {
    Slot* slot = findMethod(aClass, selector);
    if (slot == nullptr && (aClass->info & (isMetaclass | isGrave)) == 0 && resolveMethod(aClass, selector)) {
        slot = findMethod(aClass, selector);
    }
    if (slot == nullptr && (aClass->info & isGrave) != 0) {
        fatal(fmt::format("message {} to an object that is no more, once {}", selector->name, aClass->name));
    }
    if (slot == nullptr) {
        fatal(fmt::format("unrecognized selector: {}", methodName(aClass, selector)));
    }
    return slot;
}

}  // namespace

extern "C" {
Slot* objc_msg_lookup_sender(id* receiver, SEL selector, id sender);
IMP objc_msg_lookup_super(Super* super, SEL selector);
}

Slot* objc_msg_lookup_sender(id* receiver, SEL selector, id /*sender*/) {
    static Slot ofNil{nullptr, nullptr, nullptr, 0, reinterpret_cast<IMP>(answerOfNil)};
    return *receiver == nullptr ? &ofNil : methodFor(classOf(*receiver), selector);
}

IMP objc_msg_lookup_super(Super* super, SEL selector) {
    return methodFor(super->aClass, selector)->code;
}
