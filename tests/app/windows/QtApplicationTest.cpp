#include <QGuiApplication>
#include <QQuickWindow>
#include <cstdlib>

#include <gtest/gtest.h>

#include "app/windows/QtApplication.h"
#include "tests/support/EnvironmentVariable.h"

namespace corvane {
namespace {

/// Without a wish of the user's in the environment, which leads to no display here.
class QtApplicationTest : public testing::Test {
protected:
    EnvironmentVariable platform{"QT_QPA_PLATFORM", nullptr};
    EnvironmentVariable backend{"QT_QUICK_BACKEND", nullptr};
};

TEST_F(QtApplicationTest, TellsQtWhatToDoWithoutAWordToTheProgramsThatAreStarted) {
    const QtApplication application({"corvane"}, "offscreen");
    EXPECT_EQ(QGuiApplication::platformName(), "offscreen");
    EXPECT_EQ(QQuickWindow::sceneGraphBackend(), "software");
    EXPECT_EQ(std::getenv("QT_QPA_PLATFORM"), nullptr);
    EXPECT_EQ(std::getenv("QT_QUICK_BACKEND"), nullptr);
}

TEST_F(QtApplicationTest, LeavesTheUsersOwnWishesInTheEnvironment) {
    const EnvironmentVariable wantedPlatform("QT_QPA_PLATFORM", "minimal");
    const EnvironmentVariable wantedBackend("QT_QUICK_BACKEND", "rhi");
    const QtApplication application({"corvane"}, "offscreen");
    EXPECT_EQ(QGuiApplication::platformName(), "offscreen") << "whoever makes it knows the user's wish";
    EXPECT_STREQ(std::getenv("QT_QPA_PLATFORM"), "minimal");
    EXPECT_STREQ(std::getenv("QT_QUICK_BACKEND"), "rhi");
}

TEST_F(QtApplicationTest, IsKnownToTheDesktopAndGoesOnWithoutAWindow) {
    const QtApplication application({"corvane"}, "offscreen");
    EXPECT_EQ(QGuiApplication::applicationName(), "Corvane");
    EXPECT_EQ(QGuiApplication::desktopFileName(), "de.tavrin.corvane");
    EXPECT_FALSE(QGuiApplication::quitOnLastWindowClosed());
}

TEST_F(QtApplicationTest, TakesTheOtherArgumentsAsTheyAre) {
    const QtApplication application({"corvane", "two words", ""}, "offscreen");
    EXPECT_EQ(QCoreApplication::arguments(), (QStringList{"corvane", "two words", ""}));
}

}  // namespace
}  // namespace corvane
