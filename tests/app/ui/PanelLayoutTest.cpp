#include <QAccessible>
#include <QSignalSpy>
#include <set>

#include "app/fan/FanSettings.h"
#include "tests/app/ui/PanelTest.h"

namespace corvane {
namespace {

std::string describe(const QQuickItem& item) {
    return item.objectName().toStdString() + " \"" + item.property("text").toString().toStdString() + "\"";
}

bool isText(const QQuickItem& item) {
    return item.inherits("QQuickText") && !item.property("text").toString().isEmpty();
}
bool isControl(const QQuickItem& item) {
    return item.inherits("QQuickAbstractButton") || item.inherits("QQuickSlider") ||
           item.inherits("QQuickTextField") || item.inherits("QQuickSpinBox");
}

/// The panel with much in it.
class PanelLayout : public PanelTest, public testing::WithParamInterface<const char*> {
protected:
    void openFull(const char* coolingMode, double availableHeight) {
        machine.powerSources.set(onBattery(80));
        machine.attach("Archive of everything that was ever rendered");
        machine.defaults.set(FanSettings::coolingMode, coolingMode);
        machine.defaults.set(MenuState::closedLidWarnedSetting, true);
        machine.speak(GetParam());
        machine.openPanel(40);
        manager().toggle(SleepAssertions::Kind::system);
        manager().lid().setEnabled(true);
        machine.automate();
        manager().drives().setEnabled(true);
        manager().drives().add({"/Volumes/gone", "Gone"});
        manager().drives().add({"/Volumes/Archive", "Archive of everything that was ever rendered"});
        fan().setFansEnabled(true);
        fan().setBoostDuration(1800);
        machine.menu->setShowingCustomPicker(true);
        machine.advance(2s);
        machine.menu->panelAppeared();
        show(availableHeight);
    }

    void expectNothingCutOff() {
        const QQuickItem& root = *window->rootObject();
        forEachShown(*window->rootObject(), [&](QQuickItem& item) {
            if (!isText(item)) {
                return;
            }
            EXPECT_FALSE(item.property("truncated").toBool()) << describe(item);
            EXPECT_LE(item.property("contentWidth").toDouble(), item.width() + 0.5) << describe(item);
            EXPECT_LE(item.property("contentHeight").toDouble(), item.height() + 0.5) << describe(item);
            const QRectF place = item.mapRectToItem(&root, item.boundingRect());
            EXPECT_GE(place.left(), 0) << describe(item);
            EXPECT_LE(place.right(), root.width()) << describe(item);
        });
    }

    void expectNothingScrolls() {
        EXPECT_LT(window->rootObject()->height(), 2000);
        EXPECT_LE(item("scrollArea").property("contentHeight").toDouble(), item("scrollArea").height());
    }

    /// Tab by Tab from the first control to the first again.
    std::vector<QQuickItem*> tabOrder() {
        std::vector<QQuickItem*> order;
        constexpr int most = 200;
        for (int i = 0; i < most; ++i) {
            press(Qt::Key_Tab);
            QQuickItem* item = window->activeFocusItem();
            if (!order.empty() && item == order.front()) {
                break;
            }
            order.push_back(item);
        }
        return order;
    }
};

TEST_P(PanelLayout, CutsNothingOffInManualMode) {
    openFull("manual", 2000);
    expectNothingCutOff();
    expectNothingScrolls();
}

TEST_P(PanelLayout, CutsNothingOffInAutomaticMode) {
    openFull("auto", 2000);
    expectNothingCutOff();
    expectNothingScrolls();
}

TEST_P(PanelLayout, ScrollsBetweenHeadAndFootWhereThereIsLittleRoom) {
    openFull("manual", 500);
    expectNothingCutOff();
    const QQuickItem& root = *window->rootObject();
    EXPECT_EQ(root.height(), 500);
    EXPECT_GT(item("scrollArea").property("contentHeight").toDouble(), item("scrollArea").height());
    const QRectF foot = item("footer").mapRectToItem(&root, item("footer").boundingRect());
    EXPECT_LE(foot.bottom(), 500);
    const QRectF head = item("statusHeader").mapRectToItem(&root, item("statusHeader").boundingRect());
    EXPECT_GE(head.top(), 0);
    EXPECT_GT(item("scrollArea").height(), 200);
}

TEST_P(PanelLayout, HasANameAndARoleForEveryControl) {
    openFull("manual", 2000);
    // A screen reader comes.
    QAccessible::setActive(true);
    int controls = 0;
    forEachShown(*window->rootObject(), [&](QQuickItem& item) {
        if (!isControl(item)) {
            return;
        }
        ++controls;
        QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&item);
        ASSERT_NE(interface, nullptr) << describe(item);
        EXPECT_FALSE(interface->text(QAccessible::Name).isEmpty()) << describe(item);
        const QAccessible::Role role = interface->role();
        EXPECT_NE(role, QAccessible::NoRole) << describe(item);
        EXPECT_NE(role, QAccessible::Client) << describe(item);
    });
    EXPECT_GT(controls, 50);
}

TEST_P(PanelLayout, IsWalkedThroughByTabAsItIsRead) {
    openFull("manual", 2000);
    const std::vector<QQuickItem*> order = tabOrder();
    const std::set<QQuickItem*> reached(order.begin(), order.end());
    forEachShown(*window->rootObject(), [&](QQuickItem& item) {
        // Of the segments of one choice, the keyboard stops at the chosen one.
        if (isControl(item) && item.activeFocusOnTab() && item.isEnabled()) {
            EXPECT_TRUE(reached.contains(&item)) << describe(item);
        }
    });
    for (std::size_t i = 1; i < order.size(); ++i) {
        // What is next is no higher than all of what was before.
        EXPECT_GT(order[i]->mapToScene(QPointF(0, order[i]->height())).y(), order[i - 1]->mapToScene({}).y())
            << describe(*order[i - 1]) << " then " << describe(*order[i]);
    }
    EXPECT_GT(order.size(), 30U);
}

TEST_P(PanelLayout, ScrollsToWhatTheKeyboardGoesTo) {
    openFull("manual", 500);
    QQuickItem& area = item("scrollArea");
    for (QQuickItem* focused : tabOrder()) {
        if (area.isAncestorOf(focused)) {
            focused->forceActiveFocus(Qt::TabFocusReason);
            renderAll(*window);
            const QRectF place = focused->mapRectToItem(&area, focused->boundingRect());
            EXPECT_GE(place.top(), -0.5) << describe(*focused);
            EXPECT_LE(place.bottom(), area.height() + 0.5) << describe(*focused);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(InBothLanguages, PanelLayout, testing::Values("de", "en"),
                         [](const auto& language) { return std::string(language.param); });

TEST_F(PanelTest, AsksToBeClosedWithEscape) {
    open();
    const QSignalSpy closed(window->rootObject(), SIGNAL(closeRequested()));
    press(Qt::Key_Escape);
    EXPECT_EQ(closed.count(), 1);
}

}  // namespace
}  // namespace corvane
