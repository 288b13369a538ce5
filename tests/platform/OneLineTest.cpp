#include <string>

#include <gtest/gtest.h>

#include "platform/OneLine.h"

namespace corvane {
namespace {

std::string repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) {
        all += text;
    }
    return all;
}

TEST(OneLine, LeavesOrdinaryTextAlone) {
    EXPECT_EQ(oneLine(""), "");
    EXPECT_EQ(oneLine("Grüße — 42 % “ok”"), "Grüße — 42 % “ok”");
}

TEST(OneLine, TurnsControlCharactersAndLineBreaksIntoBlanks) {
    EXPECT_EQ(oneLine("a\nb\r\nc\td\x1B[0m\x7F"), "a b  c d [0m ");
    EXPECT_EQ(oneLine("a\u0085b\u009Bc\u2028d\u2029e"), "a b c d e");
    EXPECT_EQ(oneLine(std::string("a\0b", 3)), "a b");
}

TEST(OneLine, KeepsNeighboursOfControlCharacters) {
    EXPECT_EQ(oneLine("\u00A0\u2027\u202A~"), "\u00A0\u2027\u202A~");
}

TEST(OneLine, CutsWhatIsTooLongAtACharacter) {
    EXPECT_EQ(oneLine(repeated("x", 200)), repeated("x", 200));
    EXPECT_EQ(oneLine(repeated("x", 201)), repeated("x", 200) + "…");
    EXPECT_EQ(oneLine("x" + repeated("ü", 100)), "x" + repeated("ü", 99) + "…");
    EXPECT_EQ(oneLine(repeated("\U0001F300", 51)), repeated("\U0001F300", 50) + "…");
}

}  // namespace
}  // namespace corvane
