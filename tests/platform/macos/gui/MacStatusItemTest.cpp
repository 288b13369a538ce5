#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/macos/gui/MacStatusItem.h"
#include "platform/simulated/VirtualTime.h"
#include "tests/platform/macos/fakes/AppKit/FakeApplication.h"
#include "tests/platform/macos/fakes/AppKit/FakeMenuBar.h"

namespace corvane {
namespace {

const std::string gauge50 = "gauge.with.dots.needle.bottom.50percent";
const std::string gauge100 = "gauge.with.dots.needle.bottom.100percent";

class MacStatusItemTest : public testing::Test {
protected:
    /// What is seen of the one item.
    [[nodiscard]] FakeMenuBar::Item shown() const {
        const auto items = menuBar.items();
        EXPECT_EQ(items.size(), 1U);
        return items.empty() ? FakeMenuBar::Item() : items.front();
    }

    void listen() {
        item->setHandlers({.activated = [this](const StatusItemAnchor& anchor) { anchors.push_back(anchor); },
                           .chosen = [this](int id) { choices.push_back(id); }});
    }

    void finishWork() { time.settle(); }

    FakeApplication application;
    FakeMenuBar menuBar;
    VirtualTime time;
    std::unique_ptr<SerialQueue> mainLoop = std::make_unique<VirtualQueue>(time);
    std::unique_ptr<MacStatusItem> item = std::make_unique<MacStatusItem>(*mainLoop);
    std::vector<StatusItemAnchor> anchors;
    std::vector<int> choices;
};

TEST_F(MacStatusItemTest, ShowsTheHalfGaugeAloneToBeginWith) {
    EXPECT_EQ(shown(), (FakeMenuBar::Item{.image = gauge50,
                                          .imageDescription = "Corvane",
                                          .imageSize = 15,
                                          .imageWeight = "semibold",
                                          .isTemplate = true,
                                          .title = "",
                                          .isTitleShown = false,
                                          .toolTip = ""}));
}

TEST_F(MacStatusItemTest, ShowsTheImageThatIsWanted) {
    item->setImage(StatusImage::gauge100);
    EXPECT_EQ(shown().image, gauge100);
    EXPECT_TRUE(shown().isTemplate);
    item->setImage(StatusImage::gauge50);
    EXPECT_EQ(shown().image, gauge50);
}

TEST_F(MacStatusItemTest, ShowsASpeedometerWhereTheGaugesAreMissing) {
    menuBar.setSymbols({"speedometer"});
    item->setImage(StatusImage::gauge100);
    EXPECT_EQ(shown().image, "speedometer");
    EXPECT_EQ(shown().imageSize, 0) << "as the system has it";
    EXPECT_TRUE(shown().isTemplate);
}

TEST_F(MacStatusItemTest, ShowsNoImageWhereAllAreMissing) {
    menuBar.setSymbols({});
    item->setImage(StatusImage::gauge100);
    item->setTitle(" 64°");
    EXPECT_EQ(shown().image, "");
    EXPECT_EQ(shown().title, " 64°");
}

TEST_F(MacStatusItemTest, ShowsItsTitleBehindTheImage) {
    item->setTitle(" 64°");
    EXPECT_EQ(shown().title, " 64°");
    EXPECT_TRUE(shown().isTitleShown);
    item->setTitle("");
    EXPECT_EQ(shown().title, "");
    EXPECT_FALSE(shown().isTitleShown);
}

TEST_F(MacStatusItemTest, TakesBlanksForNoTitle) {
    item->setTitle("  ");
    EXPECT_EQ(shown().title, "");
    EXPECT_FALSE(shown().isTitleShown);
}

TEST_F(MacStatusItemTest, HasAToolTipOfWhatThereIs) {
    item->setToolTip("Corvane", "Wach bis 18:00 — 64°");
    EXPECT_EQ(shown().toolTip, "Corvane\nWach bis 18:00 — 64°");
    item->setToolTip("Corvane", "");
    EXPECT_EQ(shown().toolTip, "Corvane");
    item->setToolTip("", "text");
    EXPECT_EQ(shown().toolTip, "text");
    item->setToolTip("", "");
    EXPECT_EQ(shown().toolTip, "");
}

TEST_F(MacStatusItemTest, IsGoneFromTheMenuBarAtItsEnd) {
    item.reset();
    EXPECT_TRUE(menuBar.items().empty());
}

TEST_F(MacStatusItemTest, TellsTheMiddleOfItsLowerEdgeCountedFromTheTop) {
    listen();
    menuBar.setScreens({{0, 0, 1440, 900}});
    menuBar.placeItemsAt({1000, 876, 24, 24});
    menuBar.click();
    finishWork();
    EXPECT_EQ(anchors, (std::vector<StatusItemAnchor>{{ScreenPoint{1012, 24}}}));
}

TEST_F(MacStatusItemTest, TellsItsPlaceWithoutAClickToo) {
    menuBar.setScreens({{0, 0, 1440, 900}});
    menuBar.placeItemsAt({1000, 876, 24, 24});
    EXPECT_EQ(item->anchor(), (StatusItemAnchor{ScreenPoint{1012, 24}}));
}

TEST_F(MacStatusItemTest, TellsItsPlaceOnOtherScreensAsSeenFromTheFirst) {
    listen();
    menuBar.setScreens({{0, 0, 1440, 900}, {1440, 200, 1920, 1080}, {-1000, -600, 1000, 600}});
    menuBar.placeItemsAt({3000, 1256, 30, 24});
    menuBar.click();
    menuBar.placeItemsAt({-100.5, -24, 31, 24});
    menuBar.click();
    finishWork();
    EXPECT_EQ(anchors,
              (std::vector<StatusItemAnchor>{{ScreenPoint{3015, 900 - 1256}}, {ScreenPoint{-85, 924}}}));
}

TEST_F(MacStatusItemTest, IsActivatedByTheKeyboardToo) {
    listen();
    menuBar.press();
    finishWork();
    EXPECT_EQ(anchors.size(), 1U);
}

TEST_F(MacStatusItemTest, TellsOfAClickAsWorkOfTheMainLoop) {
    listen();
    menuBar.click();
    EXPECT_TRUE(anchors.empty()) << "AppKit is not done with the click yet";
    finishWork();
    EXPECT_EQ(anchors.size(), 1U);
}

TEST_F(MacStatusItemTest, DoesNothingForAClickThatNobodyHandles) {
    menuBar.click();
    finishWork();
    item->setHandlers({});
    menuBar.click();
    finishWork();
    EXPECT_EQ(menuBar.items().size(), 1U);
}

TEST_F(MacStatusItemTest, TellsNothingAfterItsEnd) {
    listen();
    menuBar.click();
    item.reset();
    finishWork();
    EXPECT_TRUE(anchors.empty());
}

class MacStatusItemMenuTest : public MacStatusItemTest {
protected:
    MacStatusItemMenuTest() {
        listen();
        item->setMenu({{.id = 1, .label = "Corvane öffnen"},
                       {.isSeparator = true},
                       {.id = 2, .label = "Wach bleiben", .isChecked = true},
                       {.id = 3, .label = "Lüfter", .isEnabled = false, .isChecked = false}});
    }

    /// Opens the menu and chooses.
    void choose(const std::string& label) {
        menuBar.setMenuUse([=](const auto&) { return label; });
        menuBar.rightClick();
        finishWork();
    }
};

TEST_F(MacStatusItemMenuTest, ShowsItsEntriesBelowTheItem) {
    std::vector<FakeMenuBar::MenuLine> lines;
    menuBar.placeItemsAt({1000, 876, 24, 24});
    menuBar.setMenuUse([&](const FakeMenuBar::OpenMenu& menu) {
        EXPECT_EQ(menu.x, 1000);
        EXPECT_EQ(menu.y, 876);
        lines = menu.lines;
        return std::nullopt;
    });
    menuBar.rightClick();
    EXPECT_EQ(lines, (std::vector<FakeMenuBar::MenuLine>{
                         {.label = "Corvane öffnen"},
                         {.label = "", .isSeparator = true},
                         {.label = "Wach bleiben", .isChecked = true},
                         {.label = "Lüfter", .isEnabled = false},
                     }));
    EXPECT_TRUE(anchors.empty()) << "it is no click on the item";
}

TEST_F(MacStatusItemMenuTest, OpensByTheControlKeyToo) {
    menuBar.controlClick();
    finishWork();
    EXPECT_EQ(menuBar.menusOpened(), 1);
    EXPECT_TRUE(anchors.empty());
}

TEST_F(MacStatusItemMenuTest, StaysClosedForAPlainClick) {
    menuBar.click();
    finishWork();
    EXPECT_EQ(menuBar.menusOpened(), 0);
    EXPECT_EQ(anchors.size(), 1U);
}

TEST_F(MacStatusItemMenuTest, IsNotThereWithoutEntries) {
    item->setMenu({});
    menuBar.rightClick();
    finishWork();
    EXPECT_EQ(menuBar.menusOpened(), 0);
    EXPECT_TRUE(anchors.empty());
}

TEST_F(MacStatusItemMenuTest, TellsWhatWasChosen) {
    choose("Wach bleiben");
    choose("Corvane öffnen");
    EXPECT_EQ(choices, (std::vector{2, 1}));
}

TEST_F(MacStatusItemMenuTest, TellsNothingWhenItWasOnlyLookedAt) {
    menuBar.rightClick();
    choose("Lüfter");
    choose("");
    EXPECT_TRUE(choices.empty());
}

TEST_F(MacStatusItemMenuTest, LetsNothingBeChosenThatIsNotOfferedAnyMore) {
    menuBar.setMenuUse([this](const auto&) {
        item->setMenu(
            {{.id = 1, .label = "Corvane öffnen"}, {.id = 2, .label = "Wach bleiben", .isEnabled = false}});
        return "Wach bleiben";
    });
    menuBar.rightClick();
    finishWork();
    EXPECT_TRUE(choices.empty());
}

TEST_F(MacStatusItemMenuTest, TakesAChoiceByItsNumberWhenTheMenuHasChangedMeanwhile) {
    menuBar.setMenuUse([this](const auto&) {
        item->setMenu({{.id = 2, .label = "Stay awake", .isChecked = false}});
        return "Wach bleiben";
    });
    menuBar.rightClick();
    finishWork();
    EXPECT_EQ(choices, std::vector{2});
}

TEST_F(MacStatusItemMenuTest, MayBeOpenWhenTheItemEnds) {
    menuBar.setMenuUse([this](const auto&) {
        item.reset();
        return "Wach bleiben";
    });
    menuBar.rightClick();
    finishWork();
    EXPECT_TRUE(choices.empty());
}

TEST_F(MacStatusItemMenuTest, ForgetsAChoiceWhoseItemHasEnded) {
    menuBar.setMenuUse([](const auto&) { return "Wach bleiben"; });
    menuBar.rightClick();
    item.reset();
    finishWork();
    EXPECT_TRUE(choices.empty());
}

}  // namespace
}  // namespace corvane
