#include <gtest/gtest.h>

#include "platform/XmlText.h"

namespace corvane {
namespace {

TEST(XmlText, KeepsATextWithoutMarkupAsItIs) {
    EXPECT_EQ(xmlText(""), "");
    EXPECT_EQ(xmlText("Lüfter: \"45 °C\", it's fine;\n"), "Lüfter: \"45 °C\", it's fine;\n");
}

TEST(XmlText, EscapesEachCharacterThatStartsOrEndsMarkup) {
    EXPECT_EQ(xmlText("<b>R&D</b> &<>&"), "&lt;b&gt;R&amp;D&lt;/b&gt; &amp;&lt;&gt;&amp;");
}

TEST(XmlText, EscapesWhatIsEscapedAlready) {
    EXPECT_EQ(xmlText("&amp;&lt;"), "&amp;amp;&amp;lt;");
}

TEST(XmlText, TakesANulForACharacterLikeOthers) {
    EXPECT_EQ(xmlText(std::string_view("a\0<", 3)), std::string_view("a\0&lt;", 6));
}

}  // namespace
}  // namespace corvane
