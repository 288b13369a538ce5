// The functions of Dispatch, over FakeDispatch.

#include <chrono>

#include <dispatch/dispatch.h>
#include <gtest/gtest.h>

#include "tests/platform/macos/fakes/dispatch/FakeDispatch.h"
#include "tests/platform/macos/fakes/dispatch/FakeDispatchQueue.h"
#include "tests/platform/macos/fakes/dispatch/FakeDispatchSource.h"

using corvane::FakeDispatch;
using corvane::FakeDispatchObject;
using corvane::FakeDispatchQueue;
using corvane::FakeDispatchSource;
using corvane::VirtualQueue;

// Only their addresses count.
struct dispatch_source_type_s {
    char unused;
};
extern "C" {
const dispatch_source_type_s _dispatch_source_type_timer{};
const dispatch_source_type_s _dispatch_source_type_signal{};
}

namespace {

/// Only its address counts.
char globalQueue = 0;

dispatch_queue_t theGlobalQueue() {
    return reinterpret_cast<dispatch_queue_t>(&globalQueue);
}

VirtualQueue& workOf(dispatch_queue_t queue) {
    FakeDispatch& dispatch = FakeDispatch::current();
    if (queue == dispatch_get_main_queue()) {
        return dispatch.mainQueue();
    }
    // Each piece of work of the global one is on its own.
    return queue == theGlobalQueue() ? dispatch.makeQueue()
                                     : reinterpret_cast<FakeDispatchQueue*>(queue)->work();
}

FakeDispatchSource& fakeOf(dispatch_source_t source) {
    return *reinterpret_cast<FakeDispatchSource*>(source);
}

FakeDispatchObject& fakeOf(dispatch_object_t object) {
    return *reinterpret_cast<FakeDispatchObject*>(object);
}

std::int64_t calendarNanoseconds() {
    return std::chrono::nanoseconds(FakeDispatch::current().time().wallTime().time_since_epoch()).count();
}

}  // namespace

void corvane::FakeDispatchQueue::resume() {
    ADD_FAILURE() << "a queue is not made suspended";
}

void dispatch_release(dispatch_object_t object) {
    FakeDispatch& dispatch = FakeDispatch::current();
    auto* const source = dynamic_cast<FakeDispatchSource*>(&fakeOf(object));
    EXPECT_TRUE(source == nullptr || !source->isSuspended()) << "a suspended source was released";
    dispatch.sources.erase(source);
    dispatch.queueHandles.erase(dynamic_cast<FakeDispatchQueue*>(&fakeOf(object)));
    delete &fakeOf(object);
}

void dispatch_set_context(dispatch_object_t object, void* context) {
    fakeOf(object).context = context;
}

void dispatch_resume(dispatch_object_t object) {
    fakeOf(object).resume();
}

dispatch_queue_t dispatch_queue_create(const char* label, dispatch_queue_attr_t /*attributes*/) {
    FakeDispatch& dispatch = FakeDispatch::current();
    auto* const queue = new FakeDispatchQueue(dispatch.makeQueue(), label);
    dispatch.queueHandles.insert(queue);
    return reinterpret_cast<dispatch_queue_t>(queue);
}

dispatch_queue_t dispatch_get_global_queue(intptr_t /*qualityOfService*/, uintptr_t /*flags*/) {
    return theGlobalQueue();
}

void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work) {
    FakeDispatch::current().async(workOf(queue), [=] { work(context); });
}

void dispatch_sync_f(dispatch_queue_t queue, void* context, dispatch_function_t work) {
    FakeDispatch::current().sync(workOf(queue), [=] { work(context); });
}

dispatch_source_t dispatch_source_create(dispatch_source_type_t type, uintptr_t handle, uintptr_t /*mask*/,
                                         dispatch_queue_t queue) {
    const int signal =
        type == DISPATCH_SOURCE_TYPE_SIGNAL ? static_cast<int>(handle) : FakeDispatchSource::noSignal;
    auto* const source = new FakeDispatchSource(workOf(queue), signal);
    FakeDispatch::current().sources.insert(source);
    return reinterpret_cast<dispatch_source_t>(source);
}

void dispatch_source_set_event_handler_f(dispatch_source_t source, dispatch_function_t handler) {
    fakeOf(source).onEvent = handler;
}

void dispatch_source_set_registration_handler_f(dispatch_source_t source, dispatch_function_t handler) {
    fakeOf(source).onRegistration = handler;
}

void dispatch_source_cancel(dispatch_source_t source) {
    fakeOf(source).cancel();
}

uintptr_t dispatch_source_get_data(dispatch_source_t source) {
    return fakeOf(source).data();
}

void dispatch_source_set_timer(dispatch_source_t source, dispatch_time_t start, uint64_t interval,
                               uint64_t /*leeway*/) {
    EXPECT_EQ(interval, DISPATCH_TIME_FOREVER) << "the fake knows no repeating timers";
    fakeOf(source).setTimer(start);
}

// As Dispatch packs them: awake time as it is, the calendar's negated.

dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta) {
    EXPECT_EQ(when, DISPATCH_TIME_NOW) << "the fake counts from now";
    return static_cast<dispatch_time_t>(FakeDispatch::current().awakeTime().count() + delta);
}

dispatch_time_t dispatch_walltime(const struct timespec* when, int64_t delta) {
    EXPECT_EQ(when, nullptr) << "the fake counts from now";
    return static_cast<dispatch_time_t>(-(calendarNanoseconds() + delta));
}
