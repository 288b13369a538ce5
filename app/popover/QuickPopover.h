#pragma once

#include <QQmlEngine>
#include <memory>
#include <optional>

#include "app/popover/PanelModels.h"
#include "app/popover/Popover.h"
#include "app/popover/PopoverWindow.h"
#include "app/ui/AppearanceState.h"
#include "app/ui/InstalledApplicationsModel.h"
#include "app/ui/LanguageState.h"

namespace corvane {

/// The panel, drawn by Qt Quick. Loaded when it is opened for the first time, so that an application that
/// only sits in the tray stays small, and kept from then on. Made after the QGuiApplication; main loop.
class QuickPopover final : public Popover {
public:
    explicit QuickPopover(const PanelModels& models);
    ~QuickPopover() override;

    [[nodiscard]] bool isShown() const override;
    void show(std::optional<QPoint> anchor) override;
    void close() override;
    void retranslate() override;
    [[nodiscard]] bool wasClosedByThisClick(std::optional<QPoint> anchor) const override;

    /// The window, once it has been shown; null before.
    [[nodiscard]] PopoverWindow* window() const { return window_.get(); }

private:
    void load();

    PanelModels models_;
    LanguageState language_;
    AppearanceState appearance_;
    // From the first opening on.
    std::unique_ptr<QQmlEngine> engine_;
    std::unique_ptr<InstalledApplicationsModel> applications_;
    std::unique_ptr<PopoverWindow> window_;
};

}  // namespace corvane
