#include "platform/linux/gui/NotifierMenu.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>
#include <sdbus-c++/sdbus-c++.h>

namespace corvane {

namespace {

constexpr std::int32_t root = 0;
constexpr std::uint32_t protocolVersion = 3;

/// A single underscore marks the letter that the keyboard chooses an entry by.
std::string withoutMnemonics(const std::string& label) {
    std::string escaped;
    for (const char letter : label) {
        escaped.append(letter == '_' ? 2 : 1, letter);
    }
    return escaped;
}

std::map<std::string, sdbus::Variant> propertiesOf(const StatusMenuEntry& entry) {
    if (entry.isSeparator) {
        return {{"type", std::string("separator")}};
    }
    std::map<std::string, sdbus::Variant> properties{{"label", withoutMnemonics(entry.label)},
                                                     {"enabled", entry.isEnabled}};
    if (entry.isChecked) {
        properties.emplace("toggle-type", std::string("checkmark"));
        properties.emplace("toggle-state", std::int32_t{*entry.isChecked ? 1 : 0});
    }
    return properties;
}

/// Those of the names; all of them without any names.
std::map<std::string, sdbus::Variant> selected(std::map<std::string, sdbus::Variant> properties,
                                               const std::vector<std::string>& names) {
    if (!names.empty()) {
        std::erase_if(properties, [&](const auto& property) {
            return std::ranges::find(names, property.first) == names.end();
        });
    }
    return properties;
}

}  // namespace

NotifierMenu::NotifierMenu(sdbus::IConnection& connection, std::vector<StatusMenuEntry> entries,
                           std::function<void(int id)> chosen)
    : entries_(std::move(entries)),
      items_(itemsOf(entries_)),
      chosen_(std::move(chosen)),
      object_(sdbus::createObject(connection, path)) {
    registerProperties();
    registerReading();
    registerEvents();
    registerSignals();
    object_->finishRegistration();
}

std::vector<NotifierMenu::Item> NotifierMenu::itemsOf(const std::vector<StatusMenuEntry>& entries) {
    std::vector<Item> items{{root, {{"children-display", std::string("submenu")}}, false}};
    std::int32_t nextSeparator = firstSeparator;
    for (const StatusMenuEntry& entry : entries) {
        items.push_back({entry.isSeparator ? nextSeparator++ : entry.id, propertiesOf(entry),
                         entry.isEnabled && !entry.isSeparator});
    }
    return items;
}

void NotifierMenu::registerProperties() {
    object_->registerProperty("Version").onInterface(interface).withGetter([] { return protocolVersion; });
    object_->registerProperty("TextDirection").onInterface(interface).withGetter([] {
        return std::string("ltr");
    });
    object_->registerProperty("Status").onInterface(interface).withGetter(
        [] { return std::string("normal"); });
    object_->registerProperty("IconThemePath").onInterface(interface).withGetter([] { return Names(); });
}

void NotifierMenu::registerReading() {
    object_->registerMethod("GetLayout")
        .onInterface(interface)
        .implementedAs([this](std::int32_t parent, std::int32_t depth, const Names& names) {
            return layout(parent, depth, names);
        });
    object_->registerMethod("GetGroupProperties")
        .onInterface(interface)
        .implementedAs([this](const Ids& ids, const Names& names) { return groupProperties(ids, names); });
    object_->registerMethod("GetProperty")
        .onInterface(interface)
        .implementedAs([this](std::int32_t id, const std::string& name) {
            const auto& properties = existing(id).properties;
            const auto found = properties.find(name);
            if (found == properties.end()) {
                throw sdbus::Error("org.freedesktop.DBus.Error.InvalidArgs", "There is no such property.");
            }
            return found->second;
        });
}

void NotifierMenu::registerEvents() {
    object_->registerMethod("Event").onInterface(interface).implementedAs(
        [this](std::int32_t id, const std::string& event, const sdbus::Variant&, std::uint32_t) {
            handle(existing(id), event);
        });
    object_->registerMethod("EventGroup")
        .onInterface(interface)
        .implementedAs([this](const std::vector<MenuEvent>& events) { return handleGroup(events); });
    object_->registerMethod("AboutToShow").onInterface(interface).implementedAs([this](std::int32_t id) {
        static_cast<void>(existing(id));
        return false;
    });
    object_->registerMethod("AboutToShowGroup").onInterface(interface).implementedAs([this](Ids ids) {
        std::erase_if(ids, [this](std::int32_t id) { return find(id) != nullptr; });
        return std::tuple(Ids(), ids);
    });
}

void NotifierMenu::registerSignals() {
    object_->registerSignal("ItemsPropertiesUpdated")
        .onInterface(interface)
        .withParameters<std::vector<ItemProperties>, std::vector<sdbus::Struct<std::int32_t, Names>>>();
    object_->registerSignal("LayoutUpdated")
        .onInterface(interface)
        .withParameters<std::uint32_t, std::int32_t>();
    object_->registerSignal("ItemActivationRequested")
        .onInterface(interface)
        .withParameters<std::int32_t, std::uint32_t>();
}

const NotifierMenu::Item* NotifierMenu::find(std::int32_t id) const {
    const auto found = std::ranges::find(items_, id, &Item::id);
    return found == items_.end() ? nullptr : &*found;
}

const NotifierMenu::Item& NotifierMenu::existing(std::int32_t id) const {
    const Item* item = find(id);
    if (item == nullptr) {
        throw sdbus::Error("org.freedesktop.DBus.Error.InvalidArgs", "There is no such menu item.");
    }
    return *item;
}

std::tuple<std::uint32_t, NotifierMenu::Layout> NotifierMenu::layout(std::int32_t parent, std::int32_t depth,
                                                                     const Names& names) const {
    const Item& item = existing(parent);
    std::vector<sdbus::Variant> children;
    if (item.id == root && depth != 0) {
        for (std::size_t i = 1; i < items_.size(); ++i) {
            children.emplace_back(Layout(items_[i].id, selected(items_[i].properties, names), {}));
        }
    }
    return {revision_, Layout(item.id, selected(item.properties, names), std::move(children))};
}

/// As long as the menu at most, whatever is asked for.
std::vector<NotifierMenu::ItemProperties> NotifierMenu::groupProperties(const Ids& ids,
                                                                        const Names& names) const {
    std::vector<ItemProperties> group;
    for (const Item& item : items_) {
        if (ids.empty() || std::ranges::find(ids, item.id) != ids.end()) {
            group.emplace_back(item.id, selected(item.properties, names));
        }
    }
    return group;
}

void NotifierMenu::handle(const Item& item, const std::string& event) const {
    if (event == "clicked" && item.canBeChosen) {
        chosen_(item.id);
    }
}

/// The numbers that do not exist.
NotifierMenu::Ids NotifierMenu::handleGroup(const std::vector<MenuEvent>& events) const {
    Ids unknown;
    for (const MenuEvent& event : events) {
        if (const Item* item = find(event.get<0>())) {
            handle(*item, event.get<1>());
        } else {
            unknown.push_back(event.get<0>());
        }
    }
    return unknown;
}

void NotifierMenu::show(std::vector<StatusMenuEntry> entries) {
    if (entries == entries_) {
        return;
    }
    const auto former = std::exchange(entries_, std::move(entries));
    items_ = itemsOf(entries_);
    tellChanges(former);
}

/// Whether their entries have the same numbers, order and kinds of properties.
bool NotifierMenu::haveSameShape(const std::vector<StatusMenuEntry>& some,
                                 const std::vector<StatusMenuEntry>& others) {
    return std::ranges::equal(some, others, [](const StatusMenuEntry& one, const StatusMenuEntry& other) {
        return one.id == other.id && one.isSeparator == other.isSeparator &&
               one.isChecked.has_value() == other.isChecked.has_value();
    });
}

void NotifierMenu::tellChanges(const std::vector<StatusMenuEntry>& former) {
    if (!haveSameShape(former, entries_)) {
        object_->emitSignal("LayoutUpdated").onInterface(interface).withArguments(++revision_, root);
        return;
    }
    std::vector<ItemProperties> changed;
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        if (entries_[i] != former[i]) {
            const Item& item = items_[i + 1];
            changed.emplace_back(item.id, item.properties);
        }
    }
    object_->emitSignal("ItemsPropertiesUpdated")
        .onInterface(interface)
        .withArguments(changed, std::vector<sdbus::Struct<std::int32_t, Names>>());
}

}  // namespace corvane
