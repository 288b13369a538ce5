#pragma once

#include <memory>

#include "platform/SerialQueue.h"
#include "platform/StatusItem.h"

namespace corvane {

/// A place in the Mac's menu bar, which shows the item from its making to its end. A click tells the middle
/// of the item's lower edge; one with the right button or the control key opens the menu, if there is one.
/// Main thread.
class MacStatusItem final : public StatusItem {
public:
    /// `mainLoop` outlives the item.
    explicit MacStatusItem(SerialQueue& mainLoop);
    ~MacStatusItem() override;

    void setImage(StatusImage image) override;
    void setTitle(const std::string& title) override;
    void setToolTip(const std::string& title, const std::string& text) override;
    void setMenu(std::vector<StatusMenuEntry> entries) override;
    void setHandlers(StatusItemHandlers handlers) override;
    [[nodiscard]] StatusItemAnchor anchor() const override;

private:
    class Place;

    std::unique_ptr<Place> place_;
};

}  // namespace corvane
