// panel-opening [TIMES]: how long the panel takes from a click on the status item to its first frame, the
// first time, when its views are loaded, and later. On the X display, buses and machine that the environment
// names.

#include <QByteArray>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QQuickWindow>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <variant>
#include <vector>

#include "app/application/Application.h"
#include "app/application/MenuBar.h"
#include "app/popover/QuickPopover.h"
#include "app/windows/QtApplication.h"
#include "app/windows/quickViews.h"
#include "platform/select/selectAppPlatform.h"

namespace corvane {

namespace {

using namespace std::chrono_literals;

/// The panel of an application that runs otherwise as always.
class PanelOpening {
public:
    explicit PanelOpening(AppPlatform& platform)
        : platform_(platform), application_(platform), menuBar_(platform, application_, views()) {}

    void pass(Duration duration) {
        QEventLoop loop;
        const auto timer = platform_.mainQueue().after(duration, [&loop] { loop.quit(); });
        loop.exec();
    }

    /// Milliseconds from the click to the frame.
    double open() {
        QElapsedTimer clock;
        clock.start();
        menuBar_.openPanel();
        QEventLoop loop;
        QObject::connect(popover_->window(), &QQuickWindow::frameSwapped, &loop, &QEventLoop::quit);
        loop.exec();
        const double passed = static_cast<double>(clock.nsecsElapsed()) / 1e6;
        pass(500ms);
        popover_->close();
        pass(500ms);
        return passed;
    }

private:
    Views views() {
        Views all = quickViews();
        all.makePopover = [this](const PanelModels& models) {
            auto made = std::make_unique<QuickPopover>(models);
            popover_ = made.get();
            return made;
        };
        return all;
    }

    AppPlatform& platform_;
    QuickPopover* popover_ = nullptr;
    Application application_;
    MenuBar menuBar_;
};

int measure(const PlatformOptions& options, int times) {
    const auto platform = selectAppPlatform(options);
    PanelOpening opening(*platform);
    opening.pass(2s);
    const double first = opening.open();
    std::vector<double> later(static_cast<std::size_t>(times));
    std::generate(later.begin(), later.end(), [&] { return opening.open(); });
    std::sort(later.begin(), later.end());
    std::printf("| first | %.0f ms |\n| later, median of %d | %.0f ms |\n| later, longest | %.0f ms |\n",
                first, times, later[later.size() / 2], later.back());
    return EXIT_SUCCESS;
}

}  // namespace

}  // namespace corvane

int main(int argc, char** argv) {
    using namespace corvane;
    const auto options = PlatformOptions::fromEnvironment([](const char* name) { return std::getenv(name); });
    if (const auto* mistake = std::get_if<std::string>(&options)) {
        std::fprintf(stderr, "panel-opening: %s\n", mistake->c_str());
        return EXIT_FAILURE;
    }
    constexpr int defaultTimes = 9;
    const QtApplication application({argv, argv + argc}, "xcb");
    return measure(std::get<PlatformOptions>(options),
                   argc > 1 ? std::max(1, QByteArray(argv[1]).toInt()) : defaultTimes);
}
