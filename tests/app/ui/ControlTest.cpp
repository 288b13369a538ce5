#include "tests/app/ui/ControlTest.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QUrl>
#include <stdexcept>

#include <fmt/format.h>

#include "app/ui/prepareEngine.h"
#include "tests/app/ui/GuiApplication.h"

namespace corvane {

namespace {

constexpr const char* document = R"(
import QtQuick
import QtQuick.Layouts
import Corvane

Rectangle {{
    id: test

    property var asks: []
    property var state1
    property var state2

    function ask(value) {{ asks = asks.concat([String(value)]); }}

    color: Theme.background
    height: 600
    width: 380

    {}
}}
)";

}  // namespace

ControlTest::ControlTest() {
    needGuiApplication();
    defaults_.set(Lang::setting, std::string("en"));
    language_.refresh();
}

void ControlTest::speakGerman() {
    defaults_.set(Lang::setting, std::string("de"));
    language_.refresh();
}

void ControlTest::load(const std::string& items, const QVariant& state1) {
    window = std::make_unique<QQuickView>();
    prepareEngine(*window->engine(), language_, appearance_);
    auto* component = new QQmlComponent(window->engine(), window.get());
    component->setData(QByteArray::fromStdString(fmt::format(document, items)), QUrl("qrc:/test.qml"));
    QObject* root = component->createWithInitialProperties({{"state1", state1}});
    ASSERT_NE(root, nullptr) << component->errorString().toStdString();
    window->setContent(QUrl("qrc:/test.qml"), component, root);
    window->show();
    window->requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    renderAll(*window);
}

void ControlTest::setProperty(const char* name, const QVariant& value) {
    window->rootObject()->setProperty(name, value);
    renderAll(*window);
}

std::vector<std::string> ControlTest::asked() {
    std::vector<std::string> asks;
    for (const QVariant& ask : property("asks").toList()) {
        asks.push_back(ask.toString().toStdString());
    }
    window->rootObject()->setProperty("asks", QVariantList{});
    return asks;
}

void ControlTest::click(const QString& path) {
    QQuickItem& target = item(path);
    ASSERT_TRUE(target.isVisible()) << path.toStdString();
    const QPointF middle = target.mapToScene(target.boundingRect().center());
    QTest::mouseClick(window.get(), Qt::LeftButton, Qt::NoModifier, middle.toPoint());
    renderAll(*window);
}

void ControlTest::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(window.get(), key, modifiers);
    renderAll(*window);
}

std::string ControlTest::focused() {
    const QQuickItem* item = window->activeFocusItem();
    return item == nullptr ? "" : item->objectName().toStdString();
}

void ControlTest::focus(const QString& path) {
    item(path).forceActiveFocus(Qt::TabFocusReason);
    renderAll(*window);
}

QAccessibleInterface& ControlTest::accessible(const QString& path) {
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&item(path));
    if (interface == nullptr) {
        throw std::runtime_error("nothing to hear of " + path.toStdString());
    }
    return *interface;
}

std::string ControlTest::accessibleName(const QString& path) {
    return accessible(path).text(QAccessible::Name).toStdString();
}

void ControlTest::doAccessibly(const QString& path, const QString& action) {
    QAccessibleActionInterface* actions = accessible(path).actionInterface();
    ASSERT_NE(actions, nullptr);
    actions->doAction(action);
    renderAll(*window);
}

void ControlTest::setAccessibly(const QString& path, double value) {
    QAccessibleValueInterface* values = accessible(path).valueInterface();
    ASSERT_NE(values, nullptr);
    values->setCurrentValue(value);
    renderAll(*window);
}

QImage ControlTest::picture() {
    return window->grabWindow().convertToFormat(QImage::Format_RGB32);
}

}  // namespace corvane
