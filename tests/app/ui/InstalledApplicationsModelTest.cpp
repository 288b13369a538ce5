#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/ui/InstalledApplicationsModel.h"
#include "platform/simulated/SimulatedInstalledApplications.h"
#include "platform/simulated/SimulatedLocale.h"
#include "platform/simulated/VirtualTime.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class InstalledApplicationsModelTest : public testing::Test {
protected:
    void load(InstalledApplications::List list) {
        applications.set(std::move(list));
        model.load();
        time.settle();
    }
    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> all;
        for (int row = 0; row < model.rowCount({}); ++row) {
            all.push_back(
                model.data(model.index(row), InstalledApplicationsModel::nameRole).toString().toStdString());
        }
        return all;
    }

    VirtualTime time;
    VirtualQueue mainLoop{time};
    SimulatedInstalledApplications applications{mainLoop};
    SimulatedLocale locale;
    InstalledApplicationsModel model{applications, locale};
};

TEST_F(InstalledApplicationsModelTest, IsEmptyUntilItIsToldToLoad) {
    applications.set({{"a", "A", ""}});
    time.settle();
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_TRUE(model.isEmpty());
    EXPECT_FALSE(model.isLoading());
}

TEST_F(InstalledApplicationsModelTest, ListsInTheOrderOfTheUsersLanguage) {
    locale.prefer({"de"});
    load({{"z", "Zeichnen", ""}, {"b", "blender", ""}, {"a", "Ägypten", ""}, {"c", "Bild", ""}});
    EXPECT_THAT(names(), ElementsAre("Ägypten", "Bild", "blender", "Zeichnen"));
}

TEST_F(InstalledApplicationsModelTest, TellsAllOfAnApplication) {
    load({{"org.example.render", "Render", "/icons/render.png"}});
    const QModelIndex first = model.index(0);
    EXPECT_EQ(model.data(first, InstalledApplicationsModel::identifierRole), "org.example.render");
    EXPECT_EQ(model.data(first, InstalledApplicationsModel::nameRole), "Render");
    EXPECT_EQ(model.data(first, InstalledApplicationsModel::iconNameRole), "/icons/render.png");
    EXPECT_FALSE(model.data(first, Qt::DecorationRole).isValid());
    EXPECT_FALSE(model.data(model.index(1), InstalledApplicationsModel::nameRole).isValid());
    EXPECT_EQ(model.rowCount(first), 0);
}

TEST_F(InstalledApplicationsModelTest, ShowsWhatContainsTheFilter) {
    load({{"1", "Render", ""}, {"2", "Render Farm", ""}, {"3", "Upload", ""}});
    model.setFilter("  FARM ");
    EXPECT_THAT(names(), ElementsAre("Render Farm"));
    model.setFilter("(.*");
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_FALSE(model.isEmpty());
    model.setFilter(" ");
    EXPECT_EQ(model.count(), 3);
}

TEST_F(InstalledApplicationsModelTest, KeepsTheFilterWhenItLoadsAgain) {
    load({{"1", "Render", ""}});
    model.setFilter("up");
    load({{"1", "Render", ""}, {"3", "Upload", ""}});
    EXPECT_THAT(names(), ElementsAre("Upload"));
}

TEST_F(InstalledApplicationsModelTest, KeepsWhatItKnowsUntilTheAnswer) {
    load({{"1", "Render", ""}});
    applications.set({});
    model.load();
    EXPECT_TRUE(model.isLoading());
    EXPECT_THAT(names(), ElementsAre("Render"));
    time.settle();
    EXPECT_FALSE(model.isLoading());
    EXPECT_THAT(names(), IsEmpty());
}

}  // namespace
}  // namespace corvane
