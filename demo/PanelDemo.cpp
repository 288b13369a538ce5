#include "demo/PanelDemo.h"

#include <QEventLoop>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <utility>

#include <fmt/format.h>

#include "app/onboarding/onboardingPages.h"
#include "app/windows/makeOnboardingWindow.h"
#include "app/windows/quickViews.h"

namespace corvane {

namespace {

using namespace std::chrono_literals;

constexpr int idleSeconds = 3;
constexpr int loadSeconds = 30;
constexpr int patienceSeconds = 240;
constexpr int idleWatts = 2;
constexpr int loadWatts = 110;
constexpr double floorPercent = 60;
constexpr double coolC = 50;

void announce(std::string_view text) {
    fmt::print("\n{}\n", text);
}

std::string describeTemp(const char* name, std::optional<double> celsius) {
    return celsius ? fmt::format("{} {:5.1f} °C", name, *celsius) : fmt::format("{}   —", name);
}

}  // namespace

PanelDemo::PanelDemo(AppPlatform& platform, DemoPlaces places)
    : platform_(platform),
      places_(std::move(places)),
      application_(platform),
      menuBar_(platform, application_, views()) {}

Views PanelDemo::views() {
    Views all = quickViews();
    all.makePopover = [this](const PanelModels& models) { return makePopover(models); };
    all.makeOnboardingWindow = [this](SerialQueue& mainLoop, const Lang& lang, OnboardingState& state,
                                      WindowClosed closed) {
        auto made = makeOnboardingWindow(mainLoop, lang, state, std::move(closed));
        introduction_ = made.get();
        return made;
    };
    return all;
}

/// The panel in an appearance of the demonstration's choice.
std::unique_ptr<Popover> PanelDemo::makePopover(const PanelModels& models) {
    auto made = std::make_unique<QuickPopover>(PanelModels{.mainLoop = models.mainLoop,
                                                           .manager = models.manager,
                                                           .menu = models.menu,
                                                           .header = models.header,
                                                           .temperature = models.temperature,
                                                           .applications = models.applications,
                                                           .appearance = appearance_,
                                                           .lang = models.lang,
                                                           .locale = models.locale});
    popover_ = made.get();
    return made;
}

bool PanelDemo::run() {
    menuBar_.start();
    announce("The application starts for the first time and introduces itself");
    readIntroduction();
    announce("The introduction opens the panel");
    watch(idleSeconds);

    announce(fmt::format("The Mac gets to work: {} W", loadWatts));
    setLoad(loadWatts);
    watch(idleSeconds);

    announce(fmt::format("In the panel: fans on, manual, {} %", floorPercent));
    holdFloor();
    watch(loadSeconds);
    takePictures();

    announce(fmt::format("The work is done: {} W", idleWatts));
    setLoad(idleWatts);
    if (!watchUntil([this] { return fan().cpuTempSmoothed().value_or(coolC) < coolC; })) {
        announce("The Mac did not cool down.");
        return false;
    }

    announce("In the panel: stop everything");
    hand().click("stopEverything");
    const bool isReleased = watchUntil([this] { return fan().effectivePercent() == 0; });
    announce(isReleased ? "The Mac is cool and its fans are with the firmware."
                        : "The fans were not handed back.");
    return isReleased;
}

void PanelDemo::readIntroduction() {
    pass(1s);
    for (int page = 0; page < onboardingPageCount; ++page) {
        WindowHand(introduction_->view()).click("next");
        pass(700ms);
    }
}

WindowHand PanelDemo::hand() {
    if (!popover_->isShown()) {
        menuBar_.openPanel();
        pass(500ms);
    }
    return WindowHand(*popover_->window());
}

void PanelDemo::holdFloor() {
    hand().click("fanSection/switch");
    pass(500ms);
    hand().click("fanSection/header");
    pass(500ms);
    hand().click("coolingMode/manual");
    pass(500ms);
    hand().drag("strengthSlider", floorPercent / 100);
    pass(500ms);
}

void PanelDemo::takePictures() {
    for (const std::string language : {"en", "de"}) {
        for (const bool isDark : {false, true}) {
            takePicture(fmt::format("panel-{}-{}.png", isDark ? "dark" : "light", language), language,
                        isDark);
        }
    }
}

void PanelDemo::takePicture(const std::string& name, const std::string& language, bool isDark) {
    popover_->close();
    application_.defaults().set(Lang::setting, language);
    appearance_.setDark(isDark);
    WindowHand now = hand();
    pass(1s);
    now.takePicture(fmt::format("{}/{}", places_.pictures, name));
}

void PanelDemo::setLoad(int watts) {
    // Written aside and renamed: the simulated Mac never sees half a file.
    const std::string aside = places_.scenario + ".new";
    std::ofstream(aside) << "load = " << watts << '\n';
    std::rename(aside.c_str(), places_.scenario.c_str());
}

/// Lets the application go on for that long.
void PanelDemo::pass(Duration duration) {
    QEventLoop loop;
    const auto timer = platform_.mainQueue().after(duration, [&loop] { loop.quit(); });
    loop.exec();
}

void PanelDemo::watch(int seconds) {
    for (int i = 0; i < seconds; ++i) {
        pass(1s);
        showStatus();
    }
}

bool PanelDemo::watchUntil(const std::function<bool()>& isReached) {
    for (int i = 0; i < patienceSeconds; ++i) {
        if (isReached()) {
            return true;
        }
        watch(1);
    }
    return false;
}

void PanelDemo::showStatus() {
    std::string line = fmt::format("{:>3} s", ++second_);
    for (const FanInfo& info : fan().fans()) {
        line += fmt::format(" | fan {} {:>4} → {:>4} RPM", info.index, info.currentRPM, info.targetRPM);
    }
    fmt::print("{} | {} | {} | floor {:>3.0f} % | effective {:>3.0f} % | override {}\n", line,
               describeTemp("CPU", fan().cpuTempSmoothed()), describeTemp("GPU", fan().gpuTempSmoothed()),
               fan().targetPercent(), fan().effectivePercent(), fan().thermalOverride() ? "yes" : "no");
    std::fflush(stdout);
}

}  // namespace corvane
