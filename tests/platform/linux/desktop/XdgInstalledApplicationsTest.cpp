#include <map>
#include <optional>
#include <string>
#include <vector>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/AsioSerialQueue.h"
#include "platform/linux/desktop/XdgInstalledApplications.h"
#include "platform/simulated/SimulatedLocale.h"
#include "tests/support/Notes.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

using List = InstalledApplications::List;

class XdgInstalledApplicationsTest : public testing::Test {
protected:
    ~XdgInstalledApplicationsTest() override {
        mainLoop.sync([this] { applications.reset(); });
    }

    void install(const std::string& path, const std::string& entries) const {
        folder.write(path, fmt::format("[Desktop Entry]\nType=Application\nExec=tool\n{}", entries));
    }

    const char* valueOf(const char* name) const {
        const auto found = variables.find(name);
        return found == variables.end() ? nullptr : found->second.c_str();
    }

    List list() {
        mainLoop.sync([this] {
            applications.emplace(mainLoop, locale, [this](const char* name) { return valueOf(name); });
            applications->list([this](const List& list) { replies.add(list); });
            EXPECT_EQ(replies.size(), 0U) << "not before it returns";
        });
        EXPECT_TRUE(replies.waitFor(1));
        const auto all = replies.take();
        return all.empty() ? List() : all.front();
    }

    const TemporaryFolder folder;
    std::map<std::string, std::string> variables{{"HOME", (folder / "home").string()},
                                                 {"XDG_DATA_HOME", (folder / "own").string()},
                                                 {"XDG_DATA_DIRS", (folder / "system").string()}};
    SimulatedLocale locale{{"de-DE", "en"}};
    Notes<List> replies;
    AsioSerialQueue mainLoop{"main"};
    std::optional<XdgInstalledApplications> applications;
};

TEST_F(XdgInstalledApplicationsTest, AreNoneWhereNothingIsInstalled) {
    EXPECT_THAT(list(), IsEmpty());
}

TEST_F(XdgInstalledApplicationsTest, HaveANameInTheUsersLanguageAndAnIcon) {
    install("system/applications/org.example.Files.desktop",
            "Name=Files\nName[de]=Dateien\nIcon=org.example.Files\n");
    install("own/applications/org.example.Tool.desktop", "Name=Tool\nIcon=/opt/tool/icon.png\n");
    install("own/applications/plain.desktop", "Name=Plain\n");
    EXPECT_THAT(list(), UnorderedElementsAre(
                            InstalledApplication{"org.example.Files", "Dateien", "org.example.Files"},
                            InstalledApplication{"org.example.Tool", "Tool", "/opt/tool/icon.png"},
                            InstalledApplication{"plain", "Plain", ""}));
    locale.prefer({"fr"});
    EXPECT_THAT(list(),
                testing::Contains(InstalledApplication{"org.example.Files", "Files", "org.example.Files"}));
}

TEST_F(XdgInstalledApplicationsTest, AreThoseOfTheMenus) {
    install("system/applications/shown.desktop", "Name=Shown\n");
    install("system/applications/no-display.desktop", "Name=A\nNoDisplay=true\n");
    install("system/applications/hidden.desktop", "Name=A\nHidden=true\n");
    install("system/applications/nameless.desktop", "Icon=a\n");
    install("system/applications/removed.desktop", "Name=A\n");
    install("own/applications/removed.desktop", "Hidden=true\n");
    folder.write("system/applications/link.desktop", "[Desktop Entry]\nType=Link\nName=A\n");
    EXPECT_THAT(list(), UnorderedElementsAre(InstalledApplication{"shown", "Shown", ""}));
}

TEST_F(XdgInstalledApplicationsTest, AreThoseOfTheUsersDesktop) {
    install("system/applications/gnome.desktop", "Name=Gnome\nOnlyShowIn=GNOME;Unity;\n");
    install("system/applications/not-gnome.desktop", "Name=Other\nNotShowIn=GNOME;\n");
    install("system/applications/all.desktop", "Name=All\n");
    const InstalledApplication gnome{"gnome", "Gnome", ""};
    const InstalledApplication other{"not-gnome", "Other", ""};
    const InstalledApplication all{"all", "All", ""};
    variables["XDG_CURRENT_DESKTOP"] = "ubuntu:GNOME";
    EXPECT_THAT(list(), UnorderedElementsAre(gnome, all));
    variables["XDG_CURRENT_DESKTOP"] = "KDE";
    EXPECT_THAT(list(), UnorderedElementsAre(other, all));
    variables.erase("XDG_CURRENT_DESKTOP");
    EXPECT_THAT(list(), UnorderedElementsAre(gnome, other, all)) << "where the desktop is not known";
}

TEST_F(XdgInstalledApplicationsTest, HaveNamesThatCanBeShownWhateverIsInTheFiles) {
    install("own/applications/odd.desktop",
            fmt::format("Name=one\\ntwo\\x{}\nIcon={}\n", '\x01', std::string(5000, 'i')));
    install("own/applications/long.desktop", fmt::format("Name={}\n", std::string(5000, 'n')));
    for (const InstalledApplication& application : list()) {
        EXPECT_LE(application.name.size(), 210U);
        EXPECT_EQ(application.name.find_first_of("\n\x01"), std::string::npos) << application.name;
        EXPECT_EQ(application.iconName, "");
    }
}

TEST_F(XdgInstalledApplicationsTest, LeaveOutTheApplicationItself) {
    install("system/applications/de.tavrin.corvane.desktop", "Name=Corvane\n");
    install("system/applications/tool.desktop", "Name=Tool\n");
    EXPECT_THAT(list(), ElementsAre(InstalledApplication{"tool", "Tool", ""}));
}

TEST_F(XdgInstalledApplicationsTest, AreReadAfreshEachTime) {
    install("own/applications/one.desktop", "Name=One\n");
    EXPECT_EQ(list().size(), 1U);
    install("own/applications/two.desktop", "Name=Two\n");
    EXPECT_EQ(list().size(), 2U);
}

TEST_F(XdgInstalledApplicationsTest, AnswerEveryQuestionAndNoneWhenTheyHaveEnded) {
    install("own/applications/one.desktop", "Name=One\n");
    mainLoop.sync([this] {
        applications.emplace(mainLoop, locale, [this](const char* name) { return valueOf(name); });
        for (int i = 0; i < 3; ++i) {
            applications->list([this](const List& list) { replies.add(list); });
        }
    });
    ASSERT_TRUE(replies.waitFor(3));
    mainLoop.sync([this] {
        applications->list([this](const List& list) { replies.add(list); });
        applications.reset();
    });
    mainLoop.sync([] {});
    EXPECT_EQ(replies.size(), 3U);
}

}  // namespace
}  // namespace corvane
