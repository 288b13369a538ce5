#include <gtest/gtest.h>

#include "app/installer/AppleScriptSource.h"

namespace corvane {
namespace {

TEST(AppleScriptSource, RunsAShellScriptAsRootBehindAPrompt) {
    EXPECT_EQ(appleScriptSource("true", "May it?"),
              "do shell script \"true\" with prompt \"May it?\" with administrator privileges");
}

TEST(AppleScriptSource, DoublesBackslashesAndEscapesDoubleQuotesInScriptAndPrompt) {
    EXPECT_EQ(appleScriptSource(R"(echo "a\b" 'c')", R"(Say "\" now)"),
              R"(do shell script "echo \"a\\b\" 'c'" with prompt "Say \"\\\" now" )"
              "with administrator privileges");
    EXPECT_EQ(appleScriptSource(R"(\")", ""),
              R"(do shell script "\\\"" with prompt "" with administrator privileges)");
}

TEST(AppleScriptSource, KeepsLinesAndForeignLetters) {
    EXPECT_EQ(appleScriptSource("one — ü\ntwo", "Lüfter"),
              "do shell script \"one — ü\ntwo\" with prompt \"Lüfter\" with administrator privileges");
}

}  // namespace
}  // namespace corvane
