#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// A gauge whose needle stands in the middle, or at its end.
enum class StatusImage { gauge50, gauge100 };

/// A position on the screen, in device-independent pixels, as windows are placed by it.
struct ScreenPoint {
    int x = 0;
    int y = 0;

    bool operator==(const ScreenPoint&) const = default;
};

/// Where the item was clicked.
struct StatusItemAnchor {
    /// None where the tray does not tell. Within the rectangle around all screens, though in none of them
    /// perhaps: it is the tray's word.
    std::optional<ScreenPoint> point;

    bool operator==(const StatusItemAnchor&) const = default;
};

/// One line of the item's menu.
struct StatusMenuEntry {
    /// What `chosen` is called with; unique within a menu, more than 0. Unused by a separator.
    int id = 0;
    /// UTF-8, shown to the letter.
    std::string label = {};
    bool isEnabled = true;
    /// None for an entry that cannot be checked.
    std::optional<bool> isChecked = std::nullopt;
    /// A line between entries, without label.
    bool isSeparator = false;

    bool operator==(const StatusMenuEntry&) const = default;
};

/// What the user does with the item. Either may be empty. Both run on the main loop.
struct StatusItemHandlers {
    std::function<void(const StatusItemAnchor& anchor)> activated;
    /// An enabled entry of the menu as it is now.
    std::function<void(int id)> chosen;
};

/// The application's one place among the desktop's status items: an image with a short text, to click on,
/// and a menu. Belongs to the main loop and does not block it.
///
/// Desktops have a tray, get one later, lose it, or have none: the item is there whenever a tray is.
class StatusItem {
public:
    StatusItem() = default;
    StatusItem(const StatusItem&) = delete;
    StatusItem& operator=(const StatusItem&) = delete;
    virtual ~StatusItem() = default;

    /// `gauge50` to begin with.
    virtual void setImage(StatusImage image) = 0;

    /// UTF-8, beside the image or below it; none to begin with and when it is empty. Blanks at its ends do
    /// not count.
    virtual void setTitle(const std::string& title) = 0;

    /// UTF-8 without markup, where the tray shows such a thing; none when both are empty.
    virtual void setToolTip(const std::string& title, const std::string& text) = 0;

    /// Empty to begin with.
    virtual void setMenu(std::vector<StatusMenuEntry> entries) = 0;

    virtual void setHandlers(StatusItemHandlers handlers) = 0;

    /// Where it is now, as a click on it would tell; none where the tray tells that only with a click.
    [[nodiscard]] virtual StatusItemAnchor anchor() const { return {}; }
};

}  // namespace corvane
