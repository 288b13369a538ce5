#include <optional>

#include <gtest/gtest.h>

#include "platform/macos/desktop/MainBundle.h"
#include "platform/macos/desktop/UserFolders.h"
#include "tests/platform/macos/fakes/Foundation/FakeBundles.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

TEST(MainBundle, HasItsIdentifierItsPlaceAndWhatItBringsAlong) {
    const TemporaryFolder folder;
    const auto helper = folder.write("Cörvane.app/Contents/Resources/corvane-helper", "program");
    const FakeBundles bundles("de.tavrin.corvane", (folder / "Cörvane.app").string());
    EXPECT_EQ(MainBundle::identifier(), "de.tavrin.corvane");
    EXPECT_EQ(MainBundle::path(), folder / "Cörvane.app");
    EXPECT_EQ(MainBundle::resource("corvane-helper"), helper);
    EXPECT_EQ(MainBundle::resource("other"), std::nullopt);
}

TEST(MainBundle, HasNoIdentifierOutsideOfOne) {
    const FakeBundles bundles(std::nullopt, "/usr/local/bin");
    EXPECT_EQ(MainBundle::identifier(), std::nullopt);
    EXPECT_EQ(MainBundle::path(), "/usr/local/bin");
}

TEST(UserFolders, AreTheUsersOwn) {
    const EnvironmentVariable home("HOME", "/Users/Jürgen");
    EXPECT_EQ(UserFolders::home(), "/Users/Jürgen");
    EXPECT_TRUE(UserFolders::temporary().is_absolute());
}

}  // namespace
}  // namespace corvane
