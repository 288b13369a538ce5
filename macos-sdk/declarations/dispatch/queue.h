#pragma once

#include <dispatch/object.h>
#include <stdint.h>

DISPATCH_DECL(dispatch_queue);
DISPATCH_DECL(dispatch_queue_attr);

extern "C" {

// Apple's open-source libdispatch, dispatch/queue.h.
#define DISPATCH_QUEUE_SERIAL NULL

// Apple's open-source libdispatch, dispatch/queue.h: the main thread's run loop empties the main queue.
extern struct dispatch_queue_s _dispatch_main_q;
static inline dispatch_queue_t dispatch_get_main_queue(void) {
    return &_dispatch_main_q;
}

// Apple's open-source libpthread, sys/qos.h: for what the user does not wait for.
#define QOS_CLASS_UTILITY 0x11

// Apple's open-source libdispatch, dispatch/queue.h: shared by all, and pieces of work do not wait for each
// other. The second argument is 0.
dispatch_queue_t dispatch_get_global_queue(intptr_t qualityOfService, uintptr_t flags);

// Apple's open-source libdispatch, dispatch/queue.h: the queue is the caller's to release; what waits on it
// runs nevertheless.
dispatch_queue_t dispatch_queue_create(const char* label, dispatch_queue_attr_t attributes);

// Apple's open-source libdispatch, dispatch/queue.h: one after the other, in the order of the calls.
void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work);
void dispatch_sync_f(dispatch_queue_t queue, void* context, dispatch_function_t work);

}  // extern "C"
