#include <map>
#include <string>

#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

#include "platform/linux/desktop/PkexecUninstaller.h"
#include "platform/linux/desktop/XdgFolder.h"
#include "platform/linux/desktop/XdgLoginItem.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;

class XdgFolder : public testing::Test {
protected:
    [[nodiscard]] fs::path folder() const { return xdgFolder(environment, "XDG_CONFIG_HOME", ".config"); }
    /// As the system has it.
    static fs::path home() {
        const passwd* const user = getpwuid(getuid());
        return user == nullptr ? "/" : user->pw_dir;
    }

    std::map<std::string, std::string> variables;
    const EnvironmentLookup environment = [this](const char* name) {
        const auto found = variables.find(name);
        return found == variables.end() ? nullptr : found->second.c_str();
    };
};

TEST_F(XdgFolder, IsTheOneThatTheEnvironmentNames) {
    variables = {{"HOME", "/home/someone"}, {"XDG_CONFIG_HOME", "/config"}};
    EXPECT_EQ(folder(), "/config");
}

TEST_F(XdgFolder, IsInTheUsersHomeUnlessTheEnvironmentNamesAnAbsolutePath) {
    variables = {{"HOME", "/home/someone"}};
    EXPECT_EQ(folder(), "/home/someone/.config");
    variables["XDG_CONFIG_HOME"] = "relative";
    EXPECT_EQ(folder(), "/home/someone/.config");
    variables["XDG_CONFIG_HOME"] = "";
    EXPECT_EQ(folder(), "/home/someone/.config");
}

TEST_F(XdgFolder, IsInTheHomeThatTheSystemKnowsWhereTheEnvironmentNamesNone) {
    EXPECT_EQ(folder(), home() / ".config");
    variables["HOME"] = "relative";
    EXPECT_EQ(folder(), home() / ".config");
}

TEST_F(XdgFolder, HasTheLoginItemAndTheTracesEvenWhereTheEnvironmentNamesNoHome) {
    EXPECT_EQ(autostartFile(environment), home() / ".config/autostart/de.tavrin.corvane.desktop");
    EXPECT_EQ(userTraces(environment),
              (std::vector<fs::path>{autostartFile(environment), home() / ".cache/de.tavrin.corvane",
                                     home() / ".cache/Corvane"}));
}

}  // namespace
}  // namespace corvane
