#include "tests/app/ui/PanelTest.h"

#include <QQmlEngine>
#include <QQmlError>
#include <QQmlExpression>
#include <QUrl>
#include <QVariantMap>
#include <algorithm>

#include "app/ui/prepareEngine.h"
#include "tests/app/ui/GuiApplication.h"

namespace corvane {

namespace {

template <typename Object>
QVariant asProperty(Object& object) {
    QJSEngine::setObjectOwnership(&object, QJSEngine::CppOwnership);
    return QVariant::fromValue(&object);
}

QStringList heardWarnings;

void hearWarning(QtMsgType type, const QMessageLogContext& /*where*/, const QString& text) {
    if (type != QtDebugMsg && type != QtInfoMsg) {
        heardWarnings.append(text);
    }
}

}  // namespace

PanelTest::PanelTest() {
    needGuiApplication();
    machine.speak("en");
}

void PanelTest::show(double availableHeight) {
    window = std::make_unique<QQuickView>();
    prepareEngine(*window->engine(), machine.language, machine.appearance);
    window->setInitialProperties({{"manager", asProperty(manager())},
                                  {"fan", asProperty(fan())},
                                  {"updates", asProperty(manager().updates())},
                                  {"triggers", asProperty(manager().triggers())},
                                  {"lid", asProperty(manager().lid())},
                                  {"drives", asProperty(manager().drives())},
                                  {"menu", asProperty(*machine.menu)},
                                  {"header", asProperty(*machine.header)},
                                  {"temperature", asProperty(*machine.temperature)},
                                  {"applications", asProperty(machine.applicationsModel)},
                                  {"availableHeight", availableHeight}});
    window->setSource(QUrl("qrc:/qt/qml/Corvane/MenuView.qml"));
    for (const QQmlError& error : window->errors()) {
        ADD_FAILURE() << error.toString().toStdString();
    }
    ASSERT_NE(window->rootObject(), nullptr);
    window->setResizeMode(QQuickView::SizeViewToRootObject);
    window->show();
    window->requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    settle();
}

std::vector<QQuickItem*> PanelTest::allShown(const QString& name) {
    std::vector<QQuickItem*> items;
    forEachShown(*window->contentItem(), [&](QQuickItem& each) {
        if (each.objectName() == name) {
            items.push_back(&each);
        }
    });
    std::ranges::sort(items, {}, [](const QQuickItem* each) { return each->mapToScene({0, 0}).y(); });
    return items;
}

QColor PanelTest::themeColor(const QString& name) {
    QQmlExpression color(qmlContext(window->rootObject()), window->rootObject(), "Theme." + name);
    const QVariant found = color.evaluate();
    EXPECT_FALSE(color.hasError()) << color.error().toString().toStdString();
    return found.typeId() == QMetaType::QString ? QColor(found.toString()) : found.value<QColor>();
}

QStringList PanelTest::warningsOf(const std::function<void()>& action) {
    heardWarnings.clear();
    const QtMessageHandler before = qInstallMessageHandler(hearWarning);
    action();
    qInstallMessageHandler(before);
    return heardWarnings;
}

void PanelTest::clickAt(QPointF place, const QString& path) {
    QQuickItem& target = item(path);
    ASSERT_TRUE(target.isVisible()) << path.toStdString();
    QQuickItem& area = item("scrollArea");
    if (area.isAncestorOf(&target)) {
        QMetaObject::invokeMethod(&area, "reveal", Q_ARG(QQuickItem*, &target));
    }
    QTest::mouseClick(window.get(), Qt::LeftButton, Qt::NoModifier, target.mapToScene(place).toPoint());
    settle();
}

void PanelTest::waitForPopups() {
    const auto areStill = [this] {
        bool still = true;
        forEachShown(*window->contentItem(), [&](QQuickItem& parent) {
            for (const QObject* child : parent.children()) {
                if (child->inherits("QQuickPopup")) {
                    still = still && child->property("visible") == child->property("opened");
                }
            }
        });
        return still;
    };
    EXPECT_TRUE(QTest::qWaitFor(areStill));
    settle();
}

}  // namespace corvane
