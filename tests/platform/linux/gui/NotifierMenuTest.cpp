#include <map>
#include <tuple>

#include <gmock/gmock.h>

#include "platform/linux/gui/NotifierMenu.h"
#include "tests/platform/linux/gui/NotifierFixture.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Properties = std::map<std::string, sdbus::Variant>;
using Ids = std::vector<std::int32_t>;
using Names = std::vector<std::string>;
using Item = sdbus::Struct<std::int32_t, Properties>;
using Layout = sdbus::Struct<std::int32_t, Properties, std::vector<sdbus::Variant>>;
using MenuEvent = sdbus::Struct<std::int32_t, std::string, sdbus::Variant, std::uint32_t>;

class NotifierMenuTest : public NotifierFixture {
protected:
    static NotifierContents contents(std::vector<StatusMenuEntry> menu) {
        return {.pixmaps = {}, .toolTipTitle = "", .toolTipText = "", .menu = std::move(menu)};
    }

    static std::vector<StatusMenuEntry> menu() {
        return {{.id = 5, .label = "Open_Corvane"},
                {.id = 9, .label = "Awake", .isChecked = true},
                {.isSeparator = true},
                {.id = 7, .label = "Gone", .isEnabled = false}};
    }

    std::pair<std::uint32_t, Layout> layout(std::int32_t parent = 0, std::int32_t depth = -1,
                                            const Names& names = {}) {
        std::pair<std::uint32_t, Layout> answer;
        proxyOf(NotifierMenu::path)
            ->callMethod("GetLayout")
            .onInterface(NotifierMenu::interface)
            .withArguments(parent, depth, names)
            .storeResultsTo(answer.first, answer.second);
        return answer;
    }

    static std::vector<Layout> childrenOf(const Layout& parent) {
        std::vector<Layout> children;
        for (const sdbus::Variant& child : parent.get<2>()) {
            children.push_back(child.get<Layout>());
        }
        return children;
    }

    Ids ids() {
        Ids ids;
        for (const Layout& child : childrenOf(layout().second)) {
            ids.push_back(child.get<0>());
        }
        return ids;
    }

    std::vector<Item> group(const Ids& asked, const Names& names = {}) {
        std::vector<Item> answer;
        proxyOf(NotifierMenu::path)
            ->callMethod("GetGroupProperties")
            .onInterface(NotifierMenu::interface)
            .withArguments(asked, names)
            .storeResultsTo(answer);
        return answer;
    }

    template <typename... Args>
    std::string answer(const std::string& member, const Args&... args) {
        return errorOf(NotifierMenu::path, NotifierMenu::interface, member, args...);
    }

    std::string event(std::int32_t id, const std::string& name) {
        return answer("Event", id, name, sdbus::Variant(std::int32_t{0}), std::uint32_t{0});
    }
};

TEST_F(NotifierMenuTest, SpeaksTheThirdVersion) {
    beginShown();
    const auto version =
        proxyOf(NotifierMenu::path)->getProperty("Version").onInterface(NotifierMenu::interface);
    EXPECT_EQ(version.get<std::uint32_t>(), 3U);
}

TEST_F(NotifierMenuTest, LaysItsEntriesOut) {
    beginShown(contents(menu()));
    const Layout root = layout().second;
    EXPECT_EQ(root.get<0>(), 0);
    EXPECT_EQ(root.get<1>().at("children-display").get<std::string>(), "submenu");
    const auto children = childrenOf(root);
    ASSERT_EQ(children.size(), 4U);

    EXPECT_EQ(children[0].get<0>(), 5);
    EXPECT_EQ(children[0].get<1>().at("label").get<std::string>(), "Open__Corvane") << "no mnemonic";
    EXPECT_TRUE(children[0].get<1>().at("enabled").get<bool>());
    EXPECT_FALSE(children[0].get<1>().contains("toggle-type"));

    EXPECT_EQ(children[1].get<1>().at("toggle-type").get<std::string>(), "checkmark");
    EXPECT_EQ(children[1].get<1>().at("toggle-state").get<std::int32_t>(), 1);

    EXPECT_EQ(children[2].get<0>(), NotifierMenu::firstSeparator);
    EXPECT_EQ(children[2].get<1>().at("type").get<std::string>(), "separator");

    EXPECT_FALSE(children[3].get<1>().at("enabled").get<bool>());
}

TEST_F(NotifierMenuTest, GivesAsMuchOfTheLayoutAsIsAskedFor) {
    beginShown(contents(menu()));
    EXPECT_THAT(layout(0, 0).second.get<2>(), IsEmpty());
    EXPECT_EQ(layout(0, 1).second.get<2>().size(), 4U);
    EXPECT_EQ(layout(9, -1).second.get<1>().at("label").get<std::string>(), "Awake");
    EXPECT_THAT(layout(9, -1).second.get<2>(), IsEmpty());
    const auto labels = childrenOf(layout(0, -1, {"label"}).second);
    EXPECT_EQ(labels.at(1).get<1>().size(), 1U);
}

TEST_F(NotifierMenuTest, TellsPropertiesOfSomeOrAll) {
    beginShown(contents(menu()));
    EXPECT_EQ(group({}).size(), 5U);
    const auto some = group({9, 9, 7, 1234}, {"label", "no such property"});
    ASSERT_EQ(some.size(), 2U);
    EXPECT_EQ(some[0].get<1>().at("label").get<std::string>(), "Awake");
    EXPECT_EQ(some[1].get<1>().size(), 1U);
}

TEST_F(NotifierMenuTest, AnswersALongListOfTheSameNumberShortly) {
    beginShown(contents(menu()));
    EXPECT_EQ(group(Ids(100'000, 9)).size(), 1U);
}

TEST_F(NotifierMenuTest, TellsOneProperty) {
    beginShown(contents(menu()));
    sdbus::Variant label;
    proxyOf(NotifierMenu::path)
        ->callMethod("GetProperty")
        .onInterface(NotifierMenu::interface)
        .withArguments(std::int32_t{9}, std::string("label"))
        .storeResultsTo(label);
    EXPECT_EQ(label.get<std::string>(), "Awake");
}

TEST_F(NotifierMenuTest, ChoosesTheEntryThatIsClicked) {
    beginShown(contents(menu()));
    EXPECT_EQ(event(9, "clicked"), "no error");
    EXPECT_EQ(event(5, "clicked"), "no error");
    ASSERT_TRUE(choices.waitFor(2));
    EXPECT_THAT(choices.all(), ElementsAre(9, 5));
}

TEST_F(NotifierMenuTest, ChoosesNothingThatCannotBe) {
    beginShown(contents(menu()));
    EXPECT_EQ(event(7, "clicked"), "no error") << "disabled";
    EXPECT_EQ(event(NotifierMenu::firstSeparator, "clicked"), "no error");
    EXPECT_EQ(event(0, "clicked"), "no error") << "the menu itself";
    EXPECT_EQ(event(9, "hovered"), "no error");
    EXPECT_EQ(event(9, "opened"), "no error");
    EXPECT_EQ(event(1234, "clicked"), invalidArguments);
    settle();
    EXPECT_THAT(choices.all(), IsEmpty());
}

TEST_F(NotifierMenuTest, TakesEventsInGroups) {
    beginShown(contents(menu()));
    const std::vector<MenuEvent> events{{9, "clicked", sdbus::Variant(1), 0U},
                                        {1234, "clicked", sdbus::Variant(1), 0U},
                                        {5, "clicked", sdbus::Variant(1), 0U}};
    Ids unknown;
    proxyOf(NotifierMenu::path)
        ->callMethod("EventGroup")
        .onInterface(NotifierMenu::interface)
        .withArguments(events)
        .storeResultsTo(unknown);
    EXPECT_THAT(unknown, ElementsAre(1234));
    ASSERT_TRUE(choices.waitFor(2));
    EXPECT_THAT(choices.all(), ElementsAre(9, 5));
}

TEST_F(NotifierMenuTest, IsAlwaysReadyToBeShown) {
    beginShown(contents(menu()));
    bool needsUpdate = true;
    const auto proxy = proxyOf(NotifierMenu::path);
    proxy->callMethod("AboutToShow")
        .onInterface(NotifierMenu::interface)
        .withArguments(std::int32_t{0})
        .storeResultsTo(needsUpdate);
    EXPECT_FALSE(needsUpdate);
    Ids updates;
    Ids unknown;
    proxy->callMethod("AboutToShowGroup")
        .onInterface(NotifierMenu::interface)
        .withArguments(Ids{0, 9, 1234})
        .storeResultsTo(updates, unknown);
    EXPECT_THAT(updates, IsEmpty());
    EXPECT_THAT(unknown, ElementsAre(1234));
}

TEST_F(NotifierMenuTest, AnswersMalformedCallsWithErrorsAndGoesOn) {
    beginShown(contents(menu()));
    EXPECT_EQ(answer("GetLayout", std::int32_t{1234}, std::int32_t{-1}, Names()), invalidArguments);
    EXPECT_EQ(answer("GetLayout", std::string("all")), invalidArguments);
    EXPECT_EQ(answer("GetProperty", std::int32_t{9}, std::string("no such property")), invalidArguments);
    EXPECT_EQ(answer("GetProperty", std::int32_t{1234}, std::string("label")), invalidArguments);
    EXPECT_EQ(answer("Event", std::int32_t{9}), invalidArguments);
    EXPECT_EQ(answer("EventGroup", Ids{9}), invalidArguments);
    EXPECT_EQ(answer("AboutToShow", std::int32_t{1234}), invalidArguments);
    EXPECT_THAT(ids(), ElementsAre(5, 9, NotifierMenu::firstSeparator, 7));
}

TEST_F(NotifierMenuTest, TellsWhenOnlyPropertiesHaveChanged) {
    beginShown(contents(menu()));
    const auto listener = sdbus::createProxy(HelperBus{bus->address()}.connect(), item, NotifierMenu::path);
    Notes<std::vector<Item>> updates;
    listener->uponSignal("ItemsPropertiesUpdated")
        .onInterface(NotifierMenu::interface)
        .call([&](const std::vector<Item>& updated,
                  const std::vector<sdbus::Struct<std::int32_t, Names>>& /*removed*/) {
            updates.add(updated);
        });
    listener->finishRegistration();
    const std::uint32_t revision = layout().first;
    auto other = menu();
    other[1].isChecked = false;
    show(contents(other));
    ASSERT_TRUE(updates.waitFor(1));
    const std::vector<Item> updated = updates.all().front();
    ASSERT_EQ(updated.size(), 1U);
    EXPECT_EQ(updated[0].get<0>(), 9);
    EXPECT_EQ(updated[0].get<1>().at("toggle-state").get<std::int32_t>(), 0);
    EXPECT_EQ(layout().first, revision);
}

TEST_F(NotifierMenuTest, TellsWhenItHasOtherEntries) {
    beginShown(contents(menu()));
    const auto listener = sdbus::createProxy(HelperBus{bus->address()}.connect(), item, NotifierMenu::path);
    Notes<std::uint32_t> revisions;
    listener->uponSignal("LayoutUpdated")
        .onInterface(NotifierMenu::interface)
        .call([&](std::uint32_t revision, std::int32_t /*parent*/) { revisions.add(revision); });
    listener->finishRegistration();
    const std::uint32_t before = layout().first;
    show(contents(menu()));
    show(contents({{.id = 3, .label = "Quit"}}));
    ASSERT_TRUE(revisions.waitFor(1));
    EXPECT_THAT(revisions.all(), ElementsAre(before + 1)) << "the same menu is no news";
    EXPECT_EQ(layout().first, before + 1);
    EXPECT_THAT(ids(), ElementsAre(3));
    EXPECT_EQ(event(9, "clicked"), invalidArguments);
}

}  // namespace
}  // namespace corvane
