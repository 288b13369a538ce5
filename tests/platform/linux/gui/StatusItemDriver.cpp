#include <QGuiApplication>
#include <cstdlib>

#include <fmt/format.h>

#include "platform/linux/desktop/BusThread.h"
#include "platform/linux/desktop/QtSerialQueue.h"
#include "platform/linux/gui/DesktopAppearance.h"
#include "platform/linux/gui/DesktopStatusItem.h"

/// Puts a status item onto the desktop it is started on, for as long as it runs, and writes what happens to
/// it. Its one argument is the item's title.
int main(int argc, char** argv) {
    using namespace corvane;
    const QGuiApplication application(argc, argv);
    const auto environment = [](const char* name) -> const char* { return std::getenv(name); };
    const auto say = [](const std::string& line) {
        fmt::print("{}\n", line);
        std::fflush(stdout);
    };
    QtSerialQueue mainLoop;
    BusThread bus("session bus");
    DesktopAppearance appearance(bus, mainLoop, environment);
    DesktopStatusItem item(bus, mainLoop, appearance, environment, {.display = trayDisplay(environment)});
    item.setTitle(argc > 1 ? argv[1] : "");
    item.setImage(StatusImage::gauge100);
    item.setToolTip("Corvane", "Awake & <cool>");
    item.setMenu({{.id = 1, .label = "Open Corvane"},
                  {.id = 2, .label = "Keep_awake", .isChecked = true},
                  {.isSeparator = true},
                  {.id = 3, .label = "Unavailable", .isEnabled = false},
                  {.id = 4, .label = "Quit"}});
    item.setHandlers({.activated =
                          [&](const StatusItemAnchor& anchor) {
                              say(anchor.point
                                      ? fmt::format("activated {} {}", anchor.point->x, anchor.point->y)
                                      : "activated somewhere");
                          },
                      .chosen =
                          [&](int id) {
                              say(fmt::format("chosen {}", id));
                              if (id == 4) {
                                  QCoreApplication::quit();
                              }
                          }});
    const auto colors = appearance.observe([&] { say(appearance.isDark() ? "dark" : "light"); });
    return QGuiApplication::exec();
}
