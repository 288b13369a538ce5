#include <optional>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/desktop/MacAppleScript.h"
#include "tests/platform/macos/fakes/Foundation/FakeAppleScript.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Outcome = AppleScriptResult::Outcome;

class MacAppleScriptTest : public testing::Test {
protected:
    FakeAppleScript system;
    MacAppleScript scripting;
};

TEST_F(MacAppleScriptTest, RunsJustTheSource) {
    const std::string source =
        "do shell script \"echo 'Lüfter' \\\"—\\\"\nexit 0\" with administrator privileges";
    const AppleScriptResult result = scripting.run(source);
    EXPECT_EQ(result.outcome, Outcome::success);
    EXPECT_EQ(result.number, 0);
    EXPECT_EQ(result.message, std::nullopt);
    EXPECT_THAT(system.sources(), ElementsAre(source));
}

TEST_F(MacAppleScriptTest, TellsThatTheSystemTakesTheSourceForNoScript) {
    system.refuseSources();
    EXPECT_EQ(scripting.run("source").outcome, Outcome::notCreated);
    EXPECT_THAT(system.sources(), IsEmpty());
}

TEST_F(MacAppleScriptTest, TellsThatTheUserHasDismissedTheDialog) {
    system.endWith(FakeAppleScript::Error{.number = -128, .message = "User canceled."});
    const AppleScriptResult result = scripting.run("source");
    EXPECT_EQ(result.outcome, Outcome::failure);
    EXPECT_EQ(result.number, AppleScriptResult::userCancelled);
}

TEST_F(MacAppleScriptTest, TellsAFailureInTheSystemsWords) {
    system.endWith(FakeAppleScript::Error{.number = 1, .message = "cp: Zugriff verweigert"});
    const AppleScriptResult result = scripting.run("source");
    EXPECT_EQ(result.outcome, Outcome::failure);
    EXPECT_EQ(result.number, 1);
    EXPECT_EQ(result.message, "cp: Zugriff verweigert");
}

TEST_F(MacAppleScriptTest, TellsAFailureForWhichTheSystemHasNoWords) {
    for (const FakeAppleScript::Error& error :
         {FakeAppleScript::Error{}, FakeAppleScript::Error{.isMissing = true},
          FakeAppleScript::Error{.number = 1, .message = "text", .isNonsense = true}}) {
        system.endWith(error);
        const AppleScriptResult result = scripting.run("source");
        EXPECT_EQ(result.outcome, Outcome::failure);
        EXPECT_EQ(result.number, 0);
        EXPECT_EQ(result.message, std::nullopt);
    }
}

}  // namespace
}  // namespace corvane
