#pragma once

#include <cstddef>
#include <functional>

#import <Foundation/Foundation.h>

// What the collection classes have in common.

namespace corvane::objc {

/// Ends the program when the object is nil: Apple's collections throw, which nothing here catches.
id notNil(id object, const char* message);

struct HashOfObject {
    std::size_t operator()(id object) const { return [object hash]; }
};

struct EqualObjects {
    bool operator()(id one, id other) const { return one == other || [one isEqual:other]; }
};

/// Hands the objects of [begin, end) out to `for (x in collection)`, as many at a time as the buffer takes.
/// `mutations` changes with each change of the collection.
template <typename Iterator, typename ObjectAt>
NSUInteger enumerate(NSFastEnumerationState* state, id __unsafe_unretained buffer[], NSUInteger capacity,
                     Iterator begin, Iterator end, unsigned long* mutations, ObjectAt objectAt) {
    Iterator at = begin;
    for (unsigned long skipped = 0; skipped < state->state && at != end; ++skipped) {
        ++at;
    }
    NSUInteger count = 0;
    for (; count < capacity && at != end; ++at) {
        buffer[count++] = objectAt(*at);
    }
    state->state += count;
    state->itemsPtr = buffer;
    state->mutationsPtr = mutations;
    return count;
}

}  // namespace corvane::objc
