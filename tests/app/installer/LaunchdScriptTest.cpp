#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/installer/LaunchdScript.h"
#include "app/installer/ShellQuoting.h"

namespace corvane {
namespace {

TEST(LaunchdScript, CopiesBothFilesThenReloadsTheService) {
    EXPECT_EQ(
        launchdScript("/Applications/Corvane.app/Contents/Resources/corvane-helper", "/tmp/list.plist", {}),
        "set -e\n"
        "mkdir -p /Library/PrivilegedHelperTools\n"
        "cp '/Applications/Corvane.app/Contents/Resources/corvane-helper' "
        "'/Library/PrivilegedHelperTools/de.tavrin.corvane'\n"
        "chown root:wheel '/Library/PrivilegedHelperTools/de.tavrin.corvane'\n"
        "chmod 755 '/Library/PrivilegedHelperTools/de.tavrin.corvane'\n"
        "cp '/tmp/list.plist' '/Library/LaunchDaemons/de.tavrin.corvane.smchelper.plist'\n"
        "chown root:wheel '/Library/LaunchDaemons/de.tavrin.corvane.smchelper.plist'\n"
        "chmod 644 '/Library/LaunchDaemons/de.tavrin.corvane.smchelper.plist'\n"
        "# Reload the launchd service. `bootout` is ASYNC: bootstrapping too soon\n"
        "# races the still-tearing-down old job and fails — and under `set -e`\n"
        "# (with no `|| true`) that used to abort the script right here, leaving the\n"
        "# on-demand daemon UNREGISTERED so it never respawned after an update.\n"
        "# Fix: wait for teardown, never let a transient launchctl error abort,\n"
        "# verify it actually registered (retry once), then kickstart so the new\n"
        "# binary is live immediately.\n"
        "launchctl bootout system/de.tavrin.corvane.smchelper 2>/dev/null || true\n"
        "sleep 1\n"
        "launchctl bootstrap system '/Library/LaunchDaemons/de.tavrin.corvane.smchelper.plist' "
        "2>/dev/null || true\n"
        "launchctl enable system/de.tavrin.corvane.smchelper 2>/dev/null || true\n"
        "if ! launchctl print system/de.tavrin.corvane.smchelper >/dev/null 2>&1; then\n"
        "    sleep 1\n"
        "    launchctl bootstrap system '/Library/LaunchDaemons/de.tavrin.corvane.smchelper.plist' "
        "2>/dev/null || true\n"
        "fi\n"
        "launchctl kickstart system/de.tavrin.corvane.smchelper 2>/dev/null || true");
}

TEST(LaunchdScript, QuotesEveryPath) {
    const std::string script =
        launchdScript("/it's/helper", "/tm'p/list", {.helper = "/a'b", .propertyList = "/c'd"});
    EXPECT_THAT(script, testing::HasSubstr(R"(cp '/it'"'"'s/helper' '/a'"'"'b')"));
    EXPECT_THAT(script, testing::HasSubstr(R"(cp '/tm'"'"'p/list' '/c'"'"'d')"));
}

TEST(ShellQuoting, ReplacesEachSingleQuoteByFiveCharacters) {
    EXPECT_EQ(shellQuoted("/plain path"), "'/plain path'");
    EXPECT_EQ(shellQuoted("/it's 'so' \"odd\" $HOME\\"), R"('/it'"'"'s '"'"'so'"'"' "odd" $HOME\')");
    EXPECT_EQ(shellQuoted(""), "''");
}

}  // namespace
}  // namespace corvane
