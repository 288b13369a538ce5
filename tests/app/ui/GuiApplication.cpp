#include "tests/app/ui/GuiApplication.h"

#include <QAccessible>
#include <QGuiApplication>

#include "app/ui/uiFont.h"

namespace corvane {

void needGuiApplication() {
    if (qApp != nullptr) {
        return;
    }
    static int argumentCount = 1;
    static char name[] = "ui-tests";
    static char* arguments[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    // Lives until the process ends: what it would tear down may be gone by the time that static objects are.
    static const auto* const application = new QGuiApplication(argumentCount, arguments);
    static_cast<void>(application);
    QGuiApplication::setFont(uiFont());
    // As with a screen reader that listens.
    QAccessible::setActive(true);
}

}  // namespace corvane
