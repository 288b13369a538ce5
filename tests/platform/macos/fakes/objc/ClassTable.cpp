#include "tests/platform/macos/fakes/objc/ClassTable.h"

#include <cstdlib>
#include <cstring>
#include <map>
#include <mutex>
#include <shared_mutex>
#include <unordered_map>
#include <unordered_set>

#include <fmt/format.h>

#include "tests/platform/macos/fakes/objc/Blocks.h"
#include "tests/platform/macos/fakes/objc/Complaints.h"
#include "tests/platform/macos/fakes/objc/LiveObjects.h"
#include "tests/platform/macos/fakes/objc/Runtime.h"
#include "tests/platform/macos/fakes/objc/SelectorTable.h"

namespace corvane::objc {

namespace {

using MethodTable = std::unordered_map<const char*, Slot>;

struct ClassTable {
    std::shared_mutex mutex;
    std::map<std::string, Class> byName;
    std::unordered_set<Class> loaded;
};

ClassTable& classTable() {
    static auto& table = *new ClassTable;
    return table;
}

MethodTable& methodTable(Class aClass) {
    if (aClass->table == nullptr) {
        aClass->table = new MethodTable;
    }
    return *static_cast<MethodTable*>(aClass->table);
}

void addMethods(Class aClass, const MethodList* list) {
    for (; list != nullptr; list = list->next) {
        for (int i = 0; i < list->count; ++i) {
            const Method& method = list->methods[i];
            internSelector(method.selector);
            methodTable(aClass)[method.selector->name] = Slot{aClass, aClass, method.types, 0, method.code};
        }
    }
}

/// Variables that the class adds lie behind those of its superclass, whose size only the loaded program
/// knows.
void placeVariables(Class aClass) {
    long end = aClass->super != nullptr ? aClass->super->size : 0;
    for (int i = 0; aClass->ivars != nullptr && i < aClass->ivars->count; ++i) {
        const Ivar& variable = aClass->ivars->ivars[i];
        const long alignment = 1L << (variable.flags >> 3U & 31U);
        end = (end + alignment - 1) / alignment * alignment;
        *variable.offset = static_cast<int>(end);
        end += variable.size;
    }
    aClass->size = end;
}

Class rootOf(Class aClass) {
    while (aClass->super != nullptr) {
        aClass = aClass->super;
    }
    return aClass;
}

void loadClass(Class aClass) {
    if (!classTable().loaded.insert(aClass).second) {
        return;
    }
    if (aClass->super != nullptr) {
        loadClass(aClass->super);
    }
    classTable().byName[aClass->name] = aClass;
    addMethods(aClass, aClass->methods);
    addMethods(aClass->isa, aClass->isa->methods);
    aClass->isa->isa = rootOf(aClass)->isa;
    aClass->isa->super = aClass->super != nullptr ? aClass->super->isa : aClass;
    if (aClass->size <= 0) {
        placeVariables(aClass);
    }
}

void addProtocols(Class aClass, ProtocolList* added) {
    if (added == nullptr || added->count == 0) {
        return;
    }
    ProtocolList* last = added;
    while (last->next != nullptr) {
        last = last->next;
    }
    last->next = aClass->protocols;
    aClass->protocols = added;
}

void loadCategory(const Category& category) {
    const auto found = classTable().byName.find(category.className);
    if (found == classTable().byName.end()) {
        fatal(fmt::format("category {} of the class {}, which is not there", category.name,
                          category.className));
    }
    addMethods(found->second, category.instanceMethods);
    addMethods(found->second->isa, category.classMethods);
    addProtocols(found->second, category.protocols);
}

/// Neither is sent by this runtime: nothing is to rely on it.
void refuseLoadAndInitialize() {
    for (const auto& [name, aClass] : classTable().byName) {
        for (const char* selector : {"load", "initialize"}) {
            if (aClass->super != nullptr && ownMethod(aClass->isa, sel_registerName(selector)) != nullptr) {
                fatal(fmt::format("+[{} {}] would not be called", name, selector));
            }
        }
    }
}

bool protocolIs(const ProtocolInfo& protocol, const char* name);

bool listHas(const ProtocolList* list, const char* name) {
    for (; list != nullptr; list = list->next) {
        for (std::size_t i = 0; i < list->count; ++i) {
            if (protocolIs(*list->protocols[i], name)) {
                return true;
            }
        }
    }
    return false;
}

bool protocolIs(const ProtocolInfo& protocol, const char* name) {
    return std::strcmp(protocol.name, name) == 0 || listHas(protocol.protocols, name);
}

const ProtocolInfo& infoOf(Protocol* protocol) {
    return *reinterpret_cast<const ProtocolInfo*>(protocol);
}

const MethodDescription* findDescription(const ProtocolInfo& protocol, SEL selector, bool required,
                                         bool instance) {
    const MethodDescriptionList* list =
        required ? (instance ? protocol.instanceMethods : protocol.classMethods)
                 : (instance ? protocol.optionalInstanceMethods : protocol.optionalClassMethods);
    for (int i = 0; list != nullptr && i < list->count; ++i) {
        if (sel_isEqual(list->methods[i].selector, selector)) {
            return &list->methods[i];
        }
    }
    for (const ProtocolList* adopted = protocol.protocols; adopted != nullptr; adopted = adopted->next) {
        for (std::size_t i = 0; i < adopted->count; ++i) {
            const auto* found = findDescription(*adopted->protocols[i], selector, required, instance);
            if (found != nullptr) {
                return found;
            }
        }
    }
    return nullptr;
}

}  // namespace

Slot* ownMethod(Class aClass, SEL selector) {
    const std::shared_lock lock(classTable().mutex);
    auto* table = static_cast<MethodTable*>(aClass->table);
    const auto found = table == nullptr ? MethodTable::iterator() : table->find(selector->name);
    return table == nullptr || found == table->end() ? nullptr : &found->second;
}

Slot* findMethod(Class aClass, SEL selector) {
    for (; aClass != nullptr; aClass = aClass->super) {
        if (Slot* slot = ownMethod(aClass, selector)) {
            return slot;
        }
    }
    return nullptr;
}

Class classOf(id object) {
    static const Class tiny = objc_getClass("NSTinyString");
    return isTinyString(object) ? tiny : object->isa;
}

std::string methodName(Class aClass, SEL selector) {
    const char kind = (aClass->info & isMetaclass) != 0 ? '+' : '-';
    return fmt::format("{}[{} {}]", kind, aClass->name, selector->name);
}

}  // namespace corvane::objc

using namespace corvane::objc;

extern "C" void __objc_load(LoadInfo* info);

void __objc_load(LoadInfo* info) {
    for (SEL selector = info->selectors; selector < info->selectorsEnd; ++selector) {
        internSelector(selector);
    }
    for (Class* each = info->classes; each < info->classesEnd; ++each) {
        if (*each != nullptr) {
            loadClass(*each);
        }
    }
    for (Category* each = info->categories; each < info->categoriesEnd; ++each) {
        if (each->name != nullptr) {
            loadCategory(*each);
        }
    }
    for (ProtocolInfo* each = info->protocols; each < info->protocolsEnd; ++each) {
        each->isa = objc_getClass("Protocol");
    }
    refuseLoadAndInitialize();
    giveBlocksTheirClass(objc_getClass("NSBlock"));
    watchTests();
}

Class objc_getClass(const char* name) {
    const auto found = classTable().byName.find(name);
    return found == classTable().byName.end() ? nullptr : found->second;
}

Class object_getClass(id object) {
    return object == nullptr ? nullptr : classOf(object);
}

const char* class_getName(Class aClass) {
    return aClass->name;
}

Class class_getSuperclass(Class aClass) {
    return aClass->super;
}

BOOL class_isMetaClass(Class aClass) {
    return (aClass->info & isMetaclass) != 0;
}

BOOL class_respondsToSelector(Class aClass, SEL selector) {
    return findMethod(aClass, selector) != nullptr;
}

BOOL class_conformsToProtocol(Class aClass, Protocol* protocol) {
    return listHas(aClass->protocols, infoOf(protocol).name);
}

IMP class_getMethodImplementation(Class aClass, SEL selector) {
    const Slot* slot = findMethod(aClass, selector);
    return slot == nullptr ? nullptr : slot->code;
}

const char* class_getMethodTypes(Class aClass, SEL selector) {
    const Slot* slot = findMethod(aClass, selector);
    return slot == nullptr ? nullptr : slot->types;
}

BOOL class_addMethod(Class aClass, SEL selector, IMP code, const char* types) {
    const std::unique_lock lock(classTable().mutex);
    return methodTable(aClass).try_emplace(selector->name, Slot{aClass, aClass, types, 0, code}).second;
}

const char* protocol_getName(Protocol* protocol) {
    return infoOf(protocol).name;
}

objc_method_description protocol_getMethodDescription(Protocol* protocol, SEL selector, BOOL required,
                                                      BOOL instance) {
    const MethodDescription* found = findDescription(infoOf(protocol), selector, required, instance);
    return found == nullptr ? objc_method_description{}
                            : objc_method_description{found->selector, found->types};
}
