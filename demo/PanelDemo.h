#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "app/application/Application.h"
#include "app/application/MenuBar.h"
#include "app/popover/QuickPopover.h"
#include "app/windows/QuickWindow.h"
#include "app/windows/Views.h"
#include "demo/WindowHand.h"
#include "platform/AppPlatform.h"
#include "platform/simulated/SimulatedAppearance.h"

namespace corvane {

/// Where the demonstration finds what it works with.
struct DemoPlaces {
    /// The simulated Mac's control file.
    std::string scenario;
    /// A folder, which exists.
    std::string pictures;
};

/// Shows Corvane's main job on a simulated Mac whose helper runs already: after the introduction the Mac gets
/// hot, a floor of 60 % is set in the panel, and when the Mac is cool its fans go back to the firmware.
/// Everything is done through the windows' own controls. Writes a line of status per second to standard
/// output. Main loop.
class PanelDemo {
public:
    /// `platform` outlives the demonstration.
    PanelDemo(AppPlatform& platform, DemoPlaces places);

    /// True when the fans were handed back in the end. Throws std::runtime_error when a window lacks
    /// a control.
    bool run();

private:
    Views views();
    std::unique_ptr<Popover> makePopover(const PanelModels& models);
    WindowHand hand();
    FanController& fan() { return application_.manager().fan(); }

    void setLoad(int watts);
    void pass(Duration duration);
    void watch(int seconds);
    bool watchUntil(const std::function<bool()>& isReached);
    void showStatus();
    void readIntroduction();
    void holdFloor();
    void takePictures();
    void takePicture(const std::string& name, const std::string& language, bool isDark);

    AppPlatform& platform_;
    DemoPlaces places_;
    SimulatedAppearance appearance_;
    QuickPopover* popover_ = nullptr;
    /// While it is open.
    QuickWindow* introduction_ = nullptr;
    Application application_;
    MenuBar menuBar_;
    int second_ = 0;
};

}  // namespace corvane
