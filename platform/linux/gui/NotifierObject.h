#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <sdbus-c++/IConnection.h>
#include <sdbus-c++/IObject.h>
#include <sdbus-c++/Types.h>

#include "platform/linux/gui/NotifierContents.h"
#include "platform/linux/gui/NotifierMenu.h"

namespace corvane {

/// What the user does with a status notifier item.
struct NotifierRequests {
    /// Clicked, at this position as the host tells it; hosts that do not know tell 0, 0.
    std::function<void(int x, int y)> activate;
    /// An enabled entry of the menu.
    std::function<void(int id)> choose;
};

/// The application's status item on a bus, org.kde.StatusNotifierItem, with its menu. Belongs to the
/// connection's thread.
class NotifierObject {
public:
    static constexpr const char* path = "/StatusNotifierItem";
    static constexpr const char* interface = "org.kde.StatusNotifierItem";

    /// Throws sdbus::Error. Both requests are there.
    NotifierObject(sdbus::IConnection& connection, SharedContents contents, const NotifierRequests& requests);

    /// Shows something else and tells what has changed; throws sdbus::Error.
    void show(SharedContents contents);

private:
    using Pixmap = sdbus::Struct<std::int32_t, std::int32_t, std::vector<std::uint8_t>>;
    using Pixmaps = std::vector<Pixmap>;
    using ToolTip = sdbus::Struct<std::string, Pixmaps, std::string, std::string>;

    void registerTexts();
    void registerImages();
    void registerMethods(const std::function<void(int x, int y)>& activate);
    void registerSignals();
    [[nodiscard]] Pixmaps pixmaps() const;
    [[nodiscard]] ToolTip toolTip() const;

    SharedContents contents_;
    std::unique_ptr<sdbus::IObject> object_;
    NotifierMenu menu_;
};

}  // namespace corvane
