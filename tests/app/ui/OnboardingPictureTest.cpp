#include <QDir>
#include <QImage>
#include <cstdlib>

#include <fmt/format.h>

#include "tests/app/ui/OnboardingTest.h"

namespace corvane {
namespace {

/// Pictures of the introduction for people to look at, in the folder that CORVANE_SCREENSHOTS names. All that
/// is checked is that they can be kept.
class OnboardingPicture : public OnboardingTest, public testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        if (std::getenv("CORVANE_SCREENSHOTS") == nullptr) {
            GTEST_SKIP() << "CORVANE_SCREENSHOTS names no folder";
        }
    }
};

TEST_P(OnboardingPicture, OfEveryPage) {
    open(GetParam());
    const QDir folder(qEnvironmentVariable("CORVANE_SCREENSHOTS"));
    for (int page = 1; page <= onboardingPageCount; ++page) {
        // Colours take longest to change.
        QTest::qWait(600);
        const auto file = fmt::format("introduction-{}-{}.png", page, GetParam());
        EXPECT_TRUE(view().grabWindow().save(folder.filePath(QString::fromStdString(file)))) << file;
        introduction.advance(1);
    }
}

INSTANTIATE_TEST_SUITE_P(InEveryLanguage, OnboardingPicture, testing::Values("de", "en"));

}  // namespace
}  // namespace corvane
