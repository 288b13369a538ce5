#pragma once

#include <QAccessible>
#include <QQuickItem>
#include <QString>
#include <QStringList>
#include <QTest>
#include <memory>
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/onboarding/OnboardingState.h"
#include "app/windows/makeOnboardingWindow.h"
#include "platform/simulated/MemoryUserDefaults.h"
#include "platform/simulated/SimulatedLocale.h"
#include "platform/simulated/VirtualTime.h"
#include "tests/app/ui/GuiApplication.h"
#include "tests/app/ui/QuickItems.h"

namespace corvane {

/// The introduction in its window, off any screen. Items go by the names they have in the views.
class OnboardingTest : public testing::Test {
protected:
    OnboardingTest() {
        needGuiApplication();
        QObject::connect(&introduction, &OnboardingState::finished, &introduction, [this] { ++finished; });
    }

    /// In "de" or "en", at its first page.
    void open(const char* language) {
        speak(language);
        window = makeOnboardingWindow(mainLoop, lang, introduction, [this] { ++closed; });
        window->bringToFront();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&view()));
        settle();
    }

    void speak(const char* language) { defaults.set(Lang::setting, std::string(language)); }

    /// What happened is shown, though it may still move.
    void settle() {
        renderAll(view());
        time.settle();
    }

    /// Lets what moves come to rest.
    void waitForRest() {
        const auto areStill = [this] {
            renderAll(view());
            return item("pages").opacity() == 1 && item(shownPage()).opacity() == 1 &&
                   item(shownPage()).x() == 0 && pagesSeen() == 1;
        };
        EXPECT_TRUE(QTest::qWaitFor(areStill));
    }

    void click(const QString& path) {
        QQuickItem& target = item(path);
        ASSERT_TRUE(target.isVisible()) << path.toStdString();
        const QPointF middle = target.mapToScene(target.boundingRect().center());
        QTest::mouseClick(&view(), Qt::LeftButton, Qt::NoModifier, middle.toPoint());
        settle();
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(&view(), key, modifiers);
        settle();
    }
    void go(int delta) {
        introduction.advance(delta);
        settle();
    }

    [[nodiscard]] QQuickView& view() { return window->view(); }
    [[nodiscard]] QQuickItem& item(const QString& path) { return itemAt(*view().contentItem(), path); }
    [[nodiscard]] bool isShown(const QString& path) { return isShownAt(*view().contentItem(), path); }
    [[nodiscard]] std::string text(const QString& path) {
        return item(path).property("text").toString().toStdString();
    }
    /// The name of the page that the introduction is at.
    [[nodiscard]] QString shownPage() const { return pageName(introduction.page()); }
    [[nodiscard]] static QString pageName(int page) { return QStringLiteral("page%1").arg(page + 1); }
    /// How many of the pages are seen, more than one while they move.
    [[nodiscard]] int pagesSeen() {
        int seen = 0;
        for (int page = 0; page < onboardingPageCount; ++page) {
            seen += isShown(pageName(page)) ? 1 : 0;
        }
        return seen;
    }
    [[nodiscard]] std::string focused() {
        const QQuickItem* item = view().activeFocusItem();
        return item == nullptr ? "" : item->objectName().toStdString();
    }
    [[nodiscard]] QAccessibleInterface& accessible(const QString& path) {
        QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&item(path));
        if (interface == nullptr) {
            throw std::runtime_error("nothing to hear of " + path.toStdString());
        }
        return *interface;
    }
    [[nodiscard]] std::string accessibleName(const QString& path) {
        return accessible(path).text(QAccessible::Name).toStdString();
    }

    VirtualTime time;
    VirtualQueue mainLoop{time};
    MemoryUserDefaults defaults;
    SimulatedLocale locale;
    Lang lang{defaults, locale};
    OnboardingState introduction{lang};
    int finished = 0;
    int closed = 0;
    std::unique_ptr<QuickWindow> window;
};

}  // namespace corvane
