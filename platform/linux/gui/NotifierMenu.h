#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include <sdbus-c++/IConnection.h>
#include <sdbus-c++/IObject.h>
#include <sdbus-c++/Types.h>

#include "platform/StatusItem.h"

namespace corvane {

/// A flat menu on a bus, com.canonical.dbusmenu, for whoever shows it. Belongs to the connection's thread.
class NotifierMenu {
public:
    static constexpr const char* path = "/StatusNotifierItem/Menu";
    static constexpr const char* interface = "com.canonical.dbusmenu";
    /// Separators have this number and those that follow; entries are numbered lower.
    static constexpr std::int32_t firstSeparator = 0x40000000;

    /// Throws sdbus::Error. `chosen` runs with an enabled entry's number.
    NotifierMenu(sdbus::IConnection& connection, std::vector<StatusMenuEntry> entries,
                 std::function<void(int id)> chosen);

    /// Shows other entries and tells what has changed; throws sdbus::Error.
    void show(std::vector<StatusMenuEntry> entries);

private:
    using Properties = std::map<std::string, sdbus::Variant>;
    using Names = std::vector<std::string>;
    using Ids = std::vector<std::int32_t>;
    using ItemProperties = sdbus::Struct<std::int32_t, Properties>;
    using Layout = sdbus::Struct<std::int32_t, Properties, std::vector<sdbus::Variant>>;
    using MenuEvent = sdbus::Struct<std::int32_t, std::string, sdbus::Variant, std::uint32_t>;

    struct Item {
        std::int32_t id;
        Properties properties;
        bool canBeChosen;
    };

    static std::vector<Item> itemsOf(const std::vector<StatusMenuEntry>& entries);
    static bool haveSameShape(const std::vector<StatusMenuEntry>& some,
                              const std::vector<StatusMenuEntry>& others);
    void registerProperties();
    void registerReading();
    void registerEvents();
    void registerSignals();

    [[nodiscard]] const Item* find(std::int32_t id) const;
    [[nodiscard]] const Item& existing(std::int32_t id) const;
    [[nodiscard]] std::tuple<std::uint32_t, Layout> layout(std::int32_t parent, std::int32_t depth,
                                                           const Names& names) const;
    [[nodiscard]] std::vector<ItemProperties> groupProperties(const Ids& ids, const Names& names) const;
    void handle(const Item& item, const std::string& event) const;
    Ids handleGroup(const std::vector<MenuEvent>& events) const;
    void tellChanges(const std::vector<StatusMenuEntry>& former);

    std::vector<StatusMenuEntry> entries_;
    /// The root, then the entries.
    std::vector<Item> items_;
    std::function<void(int id)> chosen_;
    std::uint32_t revision_ = 1;
    std::unique_ptr<sdbus::IObject> object_;
};

}  // namespace corvane
