#pragma once

#include <cstddef>

#include "objc/objc.h"

/// The part of the Objective-C runtime's functions that fakes use. Names and meanings are those of Apple's
/// open-source objc4 (runtime.h); the implementation is for tests. From any thread.

#ifdef __OBJC__
@class Protocol;
#else
struct ObjcProtocol;
using Protocol = ObjcProtocol;
#endif

extern "C" {

/// A method's code; called through its true type.
typedef void (*IMP)(void);

/// Name and types (as @encode says them) of a method that a protocol asks for; both null when it doesn't.
struct objc_method_description {
    SEL name;
    const char* types;
};

SEL sel_registerName(const char* name);
const char* sel_getName(SEL selector);
BOOL sel_isEqual(SEL one, SEL other);

Class objc_getClass(const char* name);
Class object_getClass(id object);
const char* class_getName(Class aClass);
Class class_getSuperclass(Class aClass);
BOOL class_isMetaClass(Class aClass);
BOOL class_respondsToSelector(Class aClass, SEL selector);
BOOL class_conformsToProtocol(Class aClass, Protocol* protocol);
/// null when neither the class nor those above it have the method.
IMP class_getMethodImplementation(Class aClass, SEL selector);
/// The types of the class's method, or null.
const char* class_getMethodTypes(Class aClass, SEL selector);
/// False when the class itself has the method already. The types must live for ever.
BOOL class_addMethod(Class aClass, SEL selector, IMP code, const char* types);

const char* protocol_getName(Protocol* protocol);
objc_method_description protocol_getMethodDescription(Protocol* protocol, SEL selector, BOOL required,
                                                      BOOL instance);

/// A new object of reference count 1, which the caller owns. All zeroes, C++ members constructed.
id class_createInstance(Class aClass, std::size_t extraBytes);
/// Ends an object whose count is 0: destroys its members.
void object_dispose(id object);

id objc_retain(id object);
void objc_release(id object);
id objc_autorelease(id object);
void* objc_autoreleasePoolPush(void);
void objc_autoreleasePoolPop(void* pool);
}
