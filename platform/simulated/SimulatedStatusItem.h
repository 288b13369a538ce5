#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "platform/StatusItem.h"

namespace corvane {

/// A status item that remembers what it shows and is clicked by whoever likes. Main loop.
class SimulatedStatusItem final : public StatusItem {
public:
    void setImage(StatusImage image) override { image_ = image; }
    void setTitle(const std::string& title) override { title_ = title; }

    void setToolTip(const std::string& title, const std::string& text) override {
        toolTipTitle_ = title;
        toolTipText_ = text;
    }

    void setMenu(std::vector<StatusMenuEntry> entries) override { menu_ = std::move(entries); }
    void setHandlers(StatusItemHandlers handlers) override { handlers_ = std::move(handlers); }

    /// As handed over, blanks and all.
    [[nodiscard]] StatusImage image() const { return image_; }
    [[nodiscard]] const std::string& title() const { return title_; }
    [[nodiscard]] const std::string& toolTipTitle() const { return toolTipTitle_; }
    [[nodiscard]] const std::string& toolTipText() const { return toolTipText_; }
    [[nodiscard]] const std::vector<StatusMenuEntry>& menu() const { return menu_; }

    [[nodiscard]] StatusItemAnchor anchor() const override { return anchor_; }
    /// Tells its place without a click from now on.
    void tellPlace(ScreenPoint point) { anchor_ = {point}; }

    /// The user clicks.
    void click(const StatusItemAnchor& anchor = {}) const {
        if (handlers_.activated) {
            handlers_.activated(anchor);
        }
    }

    /// The user chooses from the menu. Nothing happens where there is no such entry to choose.
    void choose(int id) const {
        const bool isOffered = std::ranges::any_of(menu_, [&](const StatusMenuEntry& entry) {
            return entry.id == id && entry.isEnabled && !entry.isSeparator;
        });
        if (isOffered && handlers_.chosen) {
            handlers_.chosen(id);
        }
    }

private:
    StatusImage image_ = StatusImage::gauge50;
    std::string title_;
    std::string toolTipTitle_;
    std::string toolTipText_;
    std::vector<StatusMenuEntry> menu_;
    StatusItemAnchor anchor_;
    StatusItemHandlers handlers_;
};

}  // namespace corvane
