#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/desktop/DesktopFile.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

DesktopFile application(const std::string& entries) {
    const auto file = readDesktopFile("[Desktop Entry]\nType=Application\n" + entries);
    EXPECT_TRUE(file);
    return file.value_or(DesktopFile());
}

std::vector<std::string> programsOf(const std::string& command) {
    return application("Exec=" + command + "\n").programs;
}

TEST(DesktopFile, TellsTheProgramOfAnApplication) {
    const auto file = readDesktopFile(
        "# A comment\n"
        "\n"
        "[Desktop Entry]\n"
        "Version=1.0\n"
        "Type = Application\r\n"
        "Name=Blender\n"
        "Name[de]=Mixer\n"
        "Exec=/opt/blender/blender %f\n"
        "\n"
        "[Desktop Action new]\n"
        "Exec=other --new\n"
        "NoDisplay=true\n");
    ASSERT_TRUE(file);
    EXPECT_EQ(*file, (DesktopFile{.programs = {"blender"}, .name = "Blender", .iconName = {}}));
}

TEST(DesktopFile, OfAnotherTypeIsNoApplication) {
    EXPECT_FALSE(readDesktopFile("[Desktop Entry]\nType=Link\nExec=a\n"));
    EXPECT_FALSE(readDesktopFile("[Desktop Entry]\nExec=a\n"));
    EXPECT_FALSE(readDesktopFile("Type=Application\nExec=a\n"));
    EXPECT_FALSE(readDesktopFile("[Other]\nType=Application\nExec=a\n"));
    EXPECT_FALSE(readDesktopFile(""));
}

TEST(DesktopFile, WithoutAProgramIsAnApplication) {
    EXPECT_THAT(application("DBusActivatable=true\n").programs, IsEmpty());
    EXPECT_THAT(programsOf(""), IsEmpty());
    EXPECT_THAT(programsOf("\"\""), IsEmpty());
    EXPECT_THAT(programsOf("/"), IsEmpty());
}

TEST(DesktopFile, CountsTheFirstOfTwoEntries) {
    EXPECT_THAT(application("Exec=first\nExec=second\n").programs, ElementsAre("first"));
}

TEST(DesktopFile, KnowsQuotesAndEscapes) {
    EXPECT_THAT(programsOf("\"/opt/My Tools/tool\" --go"), ElementsAre("tool"));
    EXPECT_THAT(programsOf(R"("/opt/a \\"b\\"/to\\\\ol")"), ElementsAre("to\\ol"));
    EXPECT_THAT(programsOf("\"/opt/never closed"), ElementsAre("never closed"));
    EXPECT_THAT(programsOf("ends\\"), ElementsAre("ends\\"));
}

TEST(DesktopFile, LooksPastTheEnvironment) {
    EXPECT_THAT(programsOf("env LANG=C A=b /usr/bin/tool --go"), ElementsAre("tool"));
    EXPECT_THAT(programsOf("/usr/bin/env -i tool"), ElementsAre("tool"));
    EXPECT_THAT(programsOf("env A=b"), IsEmpty());
}

TEST(DesktopFile, DoesNotTakeAShellForAnApplication) {
    for (const char* command : {"sh -c 'tool'", "/bin/bash tool", "python3 /opt/tool.py", "python3.11 tool",
                                "/usr/bin/flatpak run org.x.Y", "env A=b perl tool", "snap run tool"}) {
        EXPECT_THAT(programsOf(command), IsEmpty()) << command;
    }
    EXPECT_THAT(programsOf("shotwell"), ElementsAre("shotwell"));
    EXPECT_THAT(programsOf("7z"), ElementsAre("7z"));
    EXPECT_THAT(programsOf("0ad"), ElementsAre("0ad"));
}

TEST(DesktopFile, TakesTheProgramThatIsTried) {
    EXPECT_THAT(application("Exec=sh -c tool\nTryExec=/usr/bin/tool\n").programs, ElementsAre("tool"));
    EXPECT_THAT(application("Exec=tool\nTryExec=tool\n").programs, ElementsAre("tool"));
    EXPECT_THAT(application("TryExec=sh\n").programs, IsEmpty());
}

TEST(DesktopFile, CountsFixedArguments) {
    EXPECT_EQ(application("Exec=tool %U\n").argumentCount, 0);
    EXPECT_EQ(application("Exec=tool --view %F --fast\n").argumentCount, 2);
    EXPECT_EQ(application("Exec=env A=b tool x\n").argumentCount, 1);
}

TEST(DesktopFile, MayBeHidden) {
    EXPECT_TRUE(application("NoDisplay=true\n").isOutOfMenus);
    EXPECT_FALSE(application("NoDisplay=false\n").isOutOfMenus);
    const auto hidden = readDesktopFile("[Desktop Entry]\nHidden=true\n");
    ASSERT_TRUE(hidden);
    EXPECT_TRUE(hidden->isHidden);
}

TEST(DesktopFile, MayHoldAnything) {
    std::string garbage("0\xff[\n=\n[[Desktop Entry]\n");
    garbage.front() = '\0';
    EXPECT_FALSE(readDesktopFile(garbage));
    EXPECT_FALSE(readDesktopFile(std::string(300'000, '[')));
    EXPECT_EQ(application("=\n=x\nExec\n[\n").programs, std::vector<std::string>());
    EXPECT_THAT(programsOf(std::string(100'000, '"')), IsEmpty());
    EXPECT_THAT(programsOf(std::string(100'000, '\\')).size(), 1U);
}

}  // namespace
}  // namespace corvane
