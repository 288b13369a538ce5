#pragma once

// Apple's open-source libdispatch, os/object.h and dispatch/object.h: in Objective-C these are objects that
// ARC counts, in C++ handles that are released by hand. The project has them in C++ alone.
#ifdef __OBJC__
#error "Use Dispatch from a .cpp: its types differ in Objective-C++."
#endif

// Apple's open-source libdispatch, dispatch/object.h: what all kinds derive from, so that C++ tells them
// apart.
typedef struct dispatch_object_s {
    dispatch_object_s() = delete;
    dispatch_object_s(const dispatch_object_s&) = delete;
    dispatch_object_s& operator=(const dispatch_object_s&) = delete;
} * dispatch_object_t;
#define DISPATCH_DECL(name) typedef struct name##_s : public dispatch_object_s{} * name##_t

typedef void (*dispatch_function_t)(void*);

extern "C" {

// Apple's open-source libdispatch, dispatch/object.h: the context is what a source's handlers are called
// with. A source is made suspended; one that is released while it is suspended ends the process.
void dispatch_release(dispatch_object_t object);
void dispatch_set_context(dispatch_object_t object, void* context);
void dispatch_resume(dispatch_object_t object);

}  // extern "C"
