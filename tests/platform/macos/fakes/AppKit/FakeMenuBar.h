#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace corvane {

/// A Mac's screens and the right side of its menu bar, as the user sees and uses them: what AppKit's fakes
/// show appears here, and what the user does goes to them. One at a time, while there is a FakeApplication;
/// main thread. At its end the test fails if something was left in the menu bar.
class FakeMenuBar {
public:
    /// Points; screen coordinates count upwards from the lower left corner of the first screen.
    struct Rect {
        double x = 0;
        double y = 0;
        double width = 0;
        double height = 0;
    };

    /// What is to be seen of a status item.
    struct Item {
        std::string image;
        std::string imageDescription;
        /// Of type, points; 0 for an image as the system has it.
        double imageSize = 0;
        std::string imageWeight;
        /// Coloured by the menu bar.
        bool isTemplate = false;
        std::string title;
        /// False when the image alone is shown.
        bool isTitleShown = false;
        std::string toolTip;

        bool operator==(const Item&) const = default;
    };

    struct MenuLine {
        std::string label;
        bool isEnabled = true;
        bool isChecked = false;
        bool isSeparator = false;

        bool operator==(const MenuLine&) const = default;
    };

    /// A menu that is open.
    struct OpenMenu {
        double x = 0;
        double y = 0;
        std::vector<MenuLine> lines;
    };

    FakeMenuBar();
    FakeMenuBar(const FakeMenuBar&) = delete;
    FakeMenuBar& operator=(const FakeMenuBar&) = delete;
    ~FakeMenuBar();

    /// Those shown, in the order they came.
    [[nodiscard]] std::vector<Item> items() const;

    /// Where the items are; all in the same place.
    void placeItemsAt(Rect frame);
    /// The first has the menu bar.
    void setScreens(std::vector<Rect> frames);
    /// The only symbols that the system has from now on.
    void setSymbols(std::set<std::string> names);

    // What the user does with the first item.

    void click();
    void rightClick();
    void controlClick();
    /// By the keyboard, or by an assistive technology.
    void press();

    /// What the user does with each menu that opens from now on: returns the label of the line that is
    /// chosen, or none to close the menu. Menus are closed at once otherwise. A line that cannot be chosen
    /// leaves the menu to close.
    void setMenuUse(std::function<std::optional<std::string>(const OpenMenu& menu)> use);
    /// That were opened so far.
    [[nodiscard]] int menusOpened() const;

    class State;

private:
    std::unique_ptr<State> state_;
};

}  // namespace corvane
