#include "tests/platform/macos/fakes/objc/Blocks.h"

#include <cstdlib>
#include <cstring>
#include <mutex>

#include "tests/platform/macos/fakes/objc/Complaints.h"
#include "tests/platform/macos/fakes/objc/Runtime.h"

/// Blocks, and variables declared __block, as clang's "Block Implementation Specification" lays them out. A
/// block on the heap is a counted object like any other.

extern "C" {
// The classes of blocks, whose addresses the compiler writes into them.
objc_class _NSConcreteStackBlock{};
objc_class _NSConcreteGlobalBlock{};
objc_class _NSConcreteMallocBlock{};
}

namespace corvane::objc {

namespace {

constexpr int hasCopyAndDispose = 1 << 25;
constexpr int hasSignature = 1 << 30;

struct BlockDescriptor {
    unsigned long reserved;
    unsigned long size;
};

/// Behind the descriptor, when the block has them.
struct BlockHelpers {
    void (*copy)(void* to, const void* from);
    void (*dispose)(const void* block);
};

struct Block {
    Class isa;
    int flags;
    int reserved;
    void (*invoke)(void*, ...);
    BlockDescriptor* descriptor;
};

/// A variable declared __block: moved to the heap with the first block that captures it.
struct Shared {
    void* isa;
    Shared* forwarding;
    int flags;
    int size;
};

struct SharedHelpers {
    void (*keep)(void* to, void* from);
    void (*destroy)(void* variable);
};

/// What this runtime keeps before a variable on the heap.
struct alignas(std::max_align_t) SharedHeader {
    int references;
};

constexpr int sharedIsOnHeap = 1 << 24;

std::mutex& sharedMutex() {
    static auto& mutex = *new std::mutex;
    return mutex;
}

Block& blockOf(id object) {
    return *reinterpret_cast<Block*>(object);
}

const BlockHelpers* helpersOf(const Block& block) {
    return (block.flags & hasCopyAndDispose) == 0
               ? nullptr
               : reinterpret_cast<const BlockHelpers*>(block.descriptor + 1);
}

const SharedHelpers* helpersOf(const Shared& variable) {
    return (variable.flags & hasCopyAndDispose) == 0 ? nullptr
                                                     : reinterpret_cast<const SharedHelpers*>(&variable + 1);
}

SharedHeader& headerOf(Shared* variable) {
    return *(reinterpret_cast<SharedHeader*>(variable) - 1);
}

/// One reference is the block's, the other that of the frame which declares the variable.
Shared* moveToHeap(Shared* variable) {
    const auto size = static_cast<std::size_t>(variable->size);
    auto* header = static_cast<SharedHeader*>(std::malloc(sizeof(SharedHeader) + size));
    if (header == nullptr) {
        fatal("out of memory");
    }
    header->references = 2;
    auto* moved = reinterpret_cast<Shared*>(header + 1);
    std::memcpy(moved, variable, size);
    moved->flags |= sharedIsOnHeap;
    moved->forwarding = moved;
    variable->forwarding = moved;
    if (const SharedHelpers* helpers = helpersOf(*variable)) {
        helpers->keep(moved, variable);
    }
    return moved;
}

Shared* shareVariable(Shared* variable) {
    const std::lock_guard lock(sharedMutex());
    Shared* const current = variable->forwarding;
    if ((current->flags & sharedIsOnHeap) == 0) {
        return moveToHeap(current);
    }
    ++headerOf(current).references;
    return current;
}

void letGoOfVariable(Shared* variable) {
    Shared* const current = variable->forwarding;
    {
        const std::lock_guard lock(sharedMutex());
        if ((current->flags & sharedIsOnHeap) == 0 || --headerOf(current).references > 0) {
            return;
        }
    }
    if (const SharedHelpers* helpers = helpersOf(*current)) {
        helpers->destroy(current);
    }
    std::free(&headerOf(current));
}

void giveClass(objc_class& blockClass, const char* name, Class super, unsigned long info) {
    blockClass.isa = super->isa;
    blockClass.super = super;
    blockClass.name = name;
    blockClass.info = info;
}

/// What a captured variable is.
enum Kind : unsigned { isObject = 3, isBlock = 7, isShared = 8, kindMask = 15, ofShared = 128 };

}  // namespace

void giveBlocksTheirClass(Class blockClass) {
    giveClass(_NSConcreteStackBlock, "__NSStackBlock__", blockClass, isStatic);
    giveClass(_NSConcreteGlobalBlock, "__NSGlobalBlock__", blockClass, isStatic);
    giveClass(_NSConcreteMallocBlock, "__NSMallocBlock__", blockClass, 0);
}

void destroyCaptured(id block) {
    if (const BlockHelpers* helpers = helpersOf(blockOf(block))) {
        helpers->dispose(block);
    }
}

const char* typesOf(id object) {
    const Block& block = blockOf(object);
    if ((block.flags & hasSignature) == 0) {
        return nullptr;
    }
    const auto* behind = reinterpret_cast<const char*>(block.descriptor + 1);
    behind += helpersOf(block) == nullptr ? 0 : sizeof(BlockHelpers);
    return *reinterpret_cast<const char* const*>(behind);
}

}  // namespace corvane::objc

using namespace corvane::objc;

extern "C" {
id _Block_copy(const void* block);
void _Block_release(const void* block);
void _Block_object_assign(void* place, const void* captured, int flags);
void _Block_object_dispose(const void* captured, int flags);
id objc_retainBlock(id block);
}

id _Block_copy(const void* pointer) {
    const id object = static_cast<id>(const_cast<void*>(pointer));
    if (object == nullptr || object->isa != &_NSConcreteStackBlock) {
        return objc_retain(object);
    }
    const Block& block = blockOf(object);
    const id copy = class_createInstance(&_NSConcreteMallocBlock, block.descriptor->size);
    std::memcpy(copy, object, block.descriptor->size);
    copy->isa = &_NSConcreteMallocBlock;
    if (const BlockHelpers* helpers = helpersOf(block)) {
        helpers->copy(copy, object);
    }
    return copy;
}

void _Block_release(const void* block) {
    objc_release(static_cast<id>(const_cast<void*>(block)));
}

void _Block_object_assign(void* place, const void* captured, int flags) {
    const auto bits = static_cast<unsigned>(flags);
    void* const object = const_cast<void*>(captured);
    void* kept = object;
    if ((bits & ofShared) == 0) {
        switch (bits & kindMask) {
            case isObject:
                kept = objc_retain(static_cast<id>(object));
                break;
            case isBlock:
                kept = _Block_copy(object);
                break;
            case isShared:
                kept = shareVariable(static_cast<Shared*>(object));
                break;
            default:
                fatal("a block captures what this runtime does not know");
        }
    }
    *static_cast<void**>(place) = kept;
}

void _Block_object_dispose(const void* captured, int flags) {
    const auto bits = static_cast<unsigned>(flags);
    void* const object = const_cast<void*>(captured);
    if ((bits & ofShared) != 0) {
        return;
    }
    if ((bits & kindMask) == isShared) {
        letGoOfVariable(static_cast<Shared*>(object));
    } else {
        objc_release(static_cast<id>(object));
    }
}

id objc_retainBlock(id block) {
    return _Block_copy(block);
}
