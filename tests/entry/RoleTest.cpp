#include <initializer_list>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "entry/Role.h"

namespace corvane {
namespace {

Role roleOf(std::initializer_list<std::string> arguments) {
    return roleFor(std::vector<std::string>(arguments));
}

TEST(Role, IsTheApplicationWithoutArguments) {
    EXPECT_EQ(roleOf({}), Role::application);
}

TEST(Role, FollowsTheFirstArgument) {
    EXPECT_EQ(roleOf({"--daemon"}), Role::daemon);
    EXPECT_EQ(roleOf({"--temps"}), Role::temps);
    EXPECT_EQ(roleOf({"--diag"}), Role::diag);
    EXPECT_EQ(roleOf({"--dumpkeys"}), Role::dumpKeys);
    EXPECT_EQ(roleOf({"--smc-write", "F0Md", "1"}), Role::smcWrite);
}

TEST(Role, IgnoresWhatFollowsTheFirstArgument) {
    EXPECT_EQ(roleOf({"--daemon", "--temps", "--diag"}), Role::daemon);
    EXPECT_EQ(roleOf({"--diag", "anything", ""}), Role::diag);
    EXPECT_EQ(roleOf({"--smc-write", "F0Md", "1", "F0Tg", "2000"}), Role::smcWrite);
    EXPECT_EQ(roleOf({"-v", "--daemon"}), Role::application);
}

TEST(Role, IsTheApplicationWhenAWriteHasNoKeyOrNoValue) {
    EXPECT_EQ(roleOf({"--smc-write"}), Role::application);
    EXPECT_EQ(roleOf({"--smc-write", "F0Md"}), Role::application);
}

TEST(Role, IsTheApplicationForWhateverIsNotSpelledExactly) {
    for (const char* argument : {"--Daemon", "--daemon ", " --daemon", "--daemo", "--daemons", "-daemon",
                                 "daemon", "", "--DIAG", "--dump-keys", "--temp", "--help"}) {
        EXPECT_EQ(roleOf({argument}), Role::application) << '"' << argument << '"';
    }
    EXPECT_EQ(roleOf({std::string("--diag\0x", 8)}), Role::application)
        << "a NUL does not end the comparison";
}

}  // namespace
}  // namespace corvane
