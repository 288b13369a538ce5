#pragma once

#include <cstddef>
#include <cstdint>

#include "objc/objc.h"

/// What the compiler writes into an object file for -fobjc-runtime=gnustep-2.0, as clang's CGObjCGNU.cpp lays
/// it out. All of it is static and lives for ever. Names and types are null-terminated.

extern "C" {

/// A method's code; called through its true type.
typedef void (*IMP)(void);

struct objc_object {
    Class isa;
};

/// A name with the types it was used with, "" or null for unknown. Several may have one name.
struct objc_selector {
    const char* name;
    const char* types;
};
}

namespace corvane::objc {

struct Method {
    IMP code;
    SEL selector;
    const char* types;
};

struct MethodList {
    MethodList* next;
    int count;
    std::size_t size;
    Method methods[1];
};

struct Ivar {
    const char* name;
    const char* types;
    /// Where the code reads the variable's place in the object, in bytes.
    int* offset;
    std::uint32_t size;
    /// From bit 3 on: the binary logarithm of the alignment.
    std::uint32_t flags;
};

struct IvarList {
    int count;
    std::size_t size;
    Ivar ivars[1];
};

struct MethodDescription {
    SEL selector;
    /// With the types of blocks' arguments.
    const char* types;
};

struct MethodDescriptionList {
    int count;
    int size;
    MethodDescription methods[1];
};

struct ProtocolList;

struct ProtocolInfo {
    Class isa;
    const char* name;
    ProtocolList* protocols;
    MethodDescriptionList* instanceMethods;
    MethodDescriptionList* classMethods;
    MethodDescriptionList* optionalInstanceMethods;
    MethodDescriptionList* optionalClassMethods;
    void* properties[4];
};

struct ProtocolList {
    ProtocolList* next;
    std::size_t count;
    ProtocolInfo* protocols[1];
};

struct Category {
    const char* name;
    const char* className;
    MethodList* instanceMethods;
    MethodList* classMethods;
    ProtocolList* protocols;
    void* properties[2];
};

/// What a literal string is.
struct ConstantString {
    Class isa;
    /// 0: ASCII; 2: UTF-16 of this machine's byte order.
    std::uint32_t encoding;
    /// In code units.
    std::uint32_t length;
    std::uint32_t bytes;
    std::uint32_t hash;
    const void* data;
};

/// What an object file tells the runtime when it is loaded.
struct LoadInfo {
    std::uint64_t version;
    SEL selectors;
    SEL selectorsEnd;
    Class* classes;
    Class* classesEnd;
    void* classReferences[2];
    Category* categories;
    Category* categoriesEnd;
    ProtocolInfo* protocols;
    ProtocolInfo* protocolsEnd;
    void* rest[6];
};

/// Bits of objc_class::info.
constexpr unsigned long isMetaclass = 1;
/// The class of objects that the compiler made: they are not counted.
constexpr unsigned long isStatic = 1UL << 21;
/// The class of objects that are no more.
constexpr unsigned long isGrave = 1UL << 20;

}  // namespace corvane::objc

extern "C" struct objc_class {
    /// The metaclass.
    Class isa;
    Class super;
    const char* name;
    long version;
    unsigned long info;
    /// Of an instance, in bytes; until the class is loaded not above 0 when the superclass's size has to be
    /// added.
    long size;
    corvane::objc::IvarList* ivars;
    corvane::objc::MethodList* methods;
    /// The class's own methods; the runtime's.
    void* table;
    void* unused[4];
    corvane::objc::ProtocolList* protocols;
    void* moreUnused;
    long abiVersion;
    void* properties;
};
