#include "tests/platform/simulated/AllocationCount.h"

#include <atomic>
#include <cstdlib>
#include <new>

#if defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define CORVANE_IS_TOLD_OF_ALLOCATIONS 1
#endif
#endif
#ifdef CORVANE_IS_TOLD_OF_ALLOCATIONS
#include <sanitizer/allocator_interface.h>
#endif

namespace {

std::atomic<std::size_t> allocations = 0;

}  // namespace

#ifdef CORVANE_IS_TOLD_OF_ALLOCATIONS

// ThreadSanitizer links all of its own operators, so that a program cannot replace them. It tells of what
// they take.
void __sanitizer_malloc_hook(const volatile void* /*memory*/, std::size_t /*size*/) {
    ++allocations;
}

#else

// Where GCC sees who allocates as well, in a unity build, it takes what is behind these for something else
// than `new`.
#ifdef __GNUC__
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
#endif

// Replace the library's own in the whole program. All forms together: a sanitizer brings its own of each,
// which end in nobody else's, and takes memory from one set that goes back to the other for a mistake.
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    ++allocations;
    return std::malloc(size == 0 ? 1 : size);
}

void* operator new(std::size_t size) {
    if (void* memory = operator new(size, std::nothrow)) {
        return memory;
    }
    throw std::bad_alloc();
}

void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
    return operator new(size, tag);
}

void* operator new[](std::size_t size) {
    return operator new(size);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept {
    std::free(memory);
}

void operator delete[](void* memory) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, const std::nothrow_t& /*tag*/) noexcept {
    std::free(memory);
}

#endif

namespace corvane {

std::size_t allocationCount() {
    return allocations;
}

}  // namespace corvane
