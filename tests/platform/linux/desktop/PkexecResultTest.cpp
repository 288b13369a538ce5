#include <string>
#include <string_view>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/desktop/PkexecResult.h"

namespace corvane {
namespace {

InstallResult resultOf(int status, std::string_view errors) {
    return pkexecResult(status, errors, "the removal");
}

InstallResult failure(std::string message) {
    return InstallResult::failure(std::move(message));
}

TEST(PkexecResult, TellsSuccessAndADismissedPromptByTheStatusAlone) {
    EXPECT_EQ(resultOf(0, "a warning\n"), InstallResult::success());
    EXPECT_EQ(resultOf(126, "Error executing command as another user: Request dismissed\n"),
              InstallResult::cancelled());
}

TEST(PkexecResult, GivesPkexecsReasonWithoutWhatItWritesAroundIt) {
    EXPECT_EQ(resultOf(127,
                       "Error executing command as another user: Not authorized\n\n"
                       "This incident has been reported.\n"),
              failure("Not authorized"));
    EXPECT_EQ(resultOf(127, "Error executing command as another user: No authentication agent found.\n"),
              failure("No authentication agent found."));
}

TEST(PkexecResult, HasASentenceOfItsOwnWhenNothingWasWritten) {
    EXPECT_EQ(resultOf(127, ""), failure("Not authorized"));
    EXPECT_EQ(resultOf(127, " \n\n"), failure("Not authorized"));
    EXPECT_EQ(resultOf(127, "Error executing command as another user: "),
              failure("Error executing command as another user:"));
    EXPECT_EQ(resultOf(3, "\n"), failure("the removal ended with status 3"));
}

TEST(PkexecResult, GivesTheLastLineOfAnyOtherFailure) {
    EXPECT_EQ(resultOf(1, "first\n  helper.unit is missing or no ordinary file \r\n\n"),
              failure("  helper.unit is missing or no ordinary file"));
    EXPECT_EQ(resultOf(1, "no line end"), failure("no line end"));
    EXPECT_EQ(resultOf(127, "Cannot run program /x: No such file or directory\n"),
              failure("Cannot run program /x: No such file or directory"));
}

TEST(PkexecResult, KeepsTheMessageShortAndPrintable) {
    EXPECT_EQ(resultOf(1, "a\tb\x1b[31mc\x7f!"), failure("a b [31mc !"));
    EXPECT_EQ(resultOf(1, std::string(5000, 'x')), failure(std::string(200, 'x') + "…"));
}

}  // namespace
}  // namespace corvane
