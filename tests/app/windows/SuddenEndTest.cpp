#include <QGuiApplication>
#include <QTimer>
#include <cstdio>
#include <cstdlib>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/windows/QtApplication.h"
#include "app/windows/SuddenEnd.h"

namespace corvane {
namespace {

using testing::HasSubstr;
using testing::Not;

struct Destroyed {
    Destroyed() = default;
    ~Destroyed() { std::fputs("what is static was destroyed\n", stderr); }
    Destroyed(const Destroyed&) = delete;
    Destroyed& operator=(const Destroyed&) = delete;
};

void makeStatic() {
    static const Destroyed something;
}

void end() {
    makeStatic();
    std::exit(EXIT_SUCCESS);
}

void endWithin() {
    const SuddenEnd suddenEnd;
    end();
}

void endAfterwards() {
    { const SuddenEnd suddenEnd; }
    end();
}

void endWithinTheEventLoop() {
    const QtApplication application({"corvane"}, "offscreen");
    QTimer::singleShot(0, end);
    QGuiApplication::exec();
}

/// Each ends a process of its own, which begins anew: Qt has threads.
class SuddenEndTest : public testing::Test {
protected:
    SuddenEndTest() { testing::FLAGS_gtest_death_test_style = "threadsafe"; }
};

TEST_F(SuddenEndTest, LeavesWhatIsStaticToTheThreadsAtWork) {
    EXPECT_EXIT(endWithin(), testing::ExitedWithCode(EXIT_FAILURE), Not(HasSubstr("was destroyed")));
}

TEST_F(SuddenEndTest, IsNoneAfterwards) {
    EXPECT_EXIT(endAfterwards(), testing::ExitedWithCode(EXIT_SUCCESS), HasSubstr("was destroyed"));
}

TEST_F(SuddenEndTest, IsThatOfAnApplicationThatQtEnds) {
    EXPECT_EXIT(endWithinTheEventLoop(), testing::ExitedWithCode(EXIT_FAILURE),
                Not(HasSubstr("was destroyed")));
}

}  // namespace
}  // namespace corvane
