#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/desktop/DesktopEntries.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Languages = std::vector<std::string>;

const std::string text =
    "Name=outside\n"
    "[Desktop Entry]\n"
    "# Name=a comment\n"
    "Name=Files\n"
    "Name[de]=Dateien\n"
    "Name[de_CH]=Dateie\n"
    "Name[pt_BR]=Arquivos\n"
    "Comment=a\\sb\\n\\tc\\\\d\\x\n"
    "OnlyShowIn=GNOME;;Unity;\n"
    "Hidden=true\n"
    "NoDisplay=True\n"
    "[Other]\n"
    "Icon=other\n";

TEST(DesktopEntries, AreThoseOfTheirGroup) {
    const DesktopEntries entries(text);
    EXPECT_EQ(entries.plain("Name"), "Files");
    EXPECT_FALSE(entries.has("Icon"));
    EXPECT_EQ(entries.plain("Icon"), "");
    EXPECT_FALSE(entries.has("# Name"));
}

TEST(DesktopEntries, AreTakenInTheFirstLanguageThatTheyHave) {
    const DesktopEntries entries(text);
    const auto name = [&](const Languages& languages) { return entries.localised("Name", languages); };
    EXPECT_EQ(name({"de-CH"}), "Dateie");
    EXPECT_EQ(name({"de-DE"}), "Dateien") << "the language without the country";
    EXPECT_EQ(name({"de"}), "Dateien");
    EXPECT_EQ(name({"fr", "pt-BR", "de"}), "Arquivos");
    EXPECT_EQ(name({"pt"}), "Files") << "not another country's";
    EXPECT_EQ(name({"en-GB", "de"}), "Files") << "what has no language is English";
    EXPECT_EQ(name({}), "Files");
    EXPECT_EQ(name({"", "-", "]"}), "Files");
}

TEST(DesktopEntries, HaveTheirEscapesResolved) {
    EXPECT_EQ(DesktopEntries(text).plain("Comment"), "a b\n\tc\\d\\x");
}

TEST(DesktopEntries, MayBeLists) {
    const DesktopEntries entries(text);
    EXPECT_THAT(entries.list("OnlyShowIn"), ElementsAre("GNOME", "Unity"));
    EXPECT_THAT(entries.list("NotShowIn"), IsEmpty());
}

TEST(DesktopEntries, AreTrueOnlyToTheLetter) {
    const DesktopEntries entries(text);
    EXPECT_TRUE(entries.isTrue("Hidden"));
    EXPECT_FALSE(entries.isTrue("NoDisplay"));
    EXPECT_FALSE(entries.isTrue("Terminal"));
}

TEST(DesktopEntries, AreBounded) {
    std::string endless = "[Desktop Entry]\n";
    for (int i = 0; i < 10'000; ++i) {
        endless.append("Key").append(std::to_string(i)).append("=x\n");
    }
    const DesktopEntries entries(endless);
    EXPECT_TRUE(entries.has("Key0"));
    EXPECT_FALSE(entries.has("Key9999"));
}

}  // namespace
}  // namespace corvane
