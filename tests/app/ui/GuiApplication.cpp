#include "tests/app/ui/GuiApplication.h"

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
    static QGuiApplication application(argumentCount, arguments);
    QGuiApplication::setFont(uiFont());
}

}  // namespace corvane
