#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/desktop/PkexecResult.h"

namespace corvane {
namespace {

InstallResult failure(std::string message) {
    return InstallResult::failure(std::move(message));
}

TEST(PkexecResult, TellsSuccessAndADismissedPromptByTheStatusAlone) {
    EXPECT_EQ(pkexecResult(0, "a warning\n"), InstallResult::success());
    EXPECT_EQ(pkexecResult(126, "Error executing command as another user: Request dismissed\n"),
              InstallResult::cancelled());
}

TEST(PkexecResult, GivesPkexecsReasonWithoutWhatItWritesAroundIt) {
    EXPECT_EQ(pkexecResult(127,
                           "Error executing command as another user: Not authorized\n\n"
                           "This incident has been reported.\n"),
              failure("Not authorized"));
    EXPECT_EQ(pkexecResult(127, "Error executing command as another user: No authentication agent found.\n"),
              failure("No authentication agent found."));
}

TEST(PkexecResult, HasASentenceOfItsOwnWhenNothingWasWritten) {
    EXPECT_EQ(pkexecResult(127, ""), failure("Not authorized"));
    EXPECT_EQ(pkexecResult(127, " \n\n"), failure("Not authorized"));
    EXPECT_EQ(pkexecResult(127, "Error executing command as another user: "),
              failure("Error executing command as another user:"));
    EXPECT_EQ(pkexecResult(3, "\n"), failure("the installation ended with status 3"));
}

TEST(PkexecResult, GivesTheLastLineOfAnyOtherFailure) {
    EXPECT_EQ(pkexecResult(1, "first\n  helper.unit is missing or no ordinary file \r\n\n"),
              failure("  helper.unit is missing or no ordinary file"));
    EXPECT_EQ(pkexecResult(1, "no line end"), failure("no line end"));
    EXPECT_EQ(pkexecResult(127, "Cannot run program /x: No such file or directory\n"),
              failure("Cannot run program /x: No such file or directory"));
}

TEST(PkexecResult, KeepsTheMessageShortAndPrintable) {
    EXPECT_EQ(pkexecResult(1, "a\tb\x1b[31mc\x7f!"), failure("a b [31mc !"));
    EXPECT_EQ(pkexecResult(1, std::string(5000, 'x')), failure(std::string(200, 'x') + "…"));
}

}  // namespace
}  // namespace corvane
