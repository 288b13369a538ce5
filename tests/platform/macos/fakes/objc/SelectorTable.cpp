#include "tests/platform/macos/fakes/objc/SelectorTable.h"

#include <map>
#include <mutex>
#include <set>
#include <string>
#include <unordered_set>

#include "tests/platform/macos/fakes/objc/Runtime.h"

namespace corvane::objc {

namespace {

struct SelectorTable {
    std::mutex mutex;
    std::set<std::string> names;
    std::unordered_set<const objc_selector*> interned;
    std::map<std::string, objc_selector> registered;
};

SelectorTable& selectorTable() {
    static auto& table = *new SelectorTable;
    return table;
}

}  // namespace

void internSelector(SEL selector) {
    SelectorTable& table = selectorTable();
    const std::lock_guard lock(table.mutex);
    if (selector->name != nullptr && table.interned.insert(selector).second) {
        selector->name = table.names.insert(selector->name).first->c_str();
    }
}

}  // namespace corvane::objc

using corvane::objc::selectorTable;

SEL sel_registerName(const char* name) {
    auto& table = selectorTable();
    SEL selector = nullptr;
    {
        const std::lock_guard lock(table.mutex);
        const auto found = table.registered.try_emplace(name, objc_selector{name, nullptr}).first;
        if (found->second.name == name) {
            found->second.name = found->first.c_str();
        }
        selector = &found->second;
    }
    corvane::objc::internSelector(selector);
    return selector;
}

const char* sel_getName(SEL selector) {
    return selector->name;
}

BOOL sel_isEqual(SEL one, SEL other) {
    if (one == nullptr || other == nullptr) {
        return one == other;
    }
    corvane::objc::internSelector(one);
    corvane::objc::internSelector(other);
    return one->name == other->name;
}
