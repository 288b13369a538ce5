#include <QColor>
#include <QQmlExpression>

#include "tests/app/ui/ControlTest.h"
#include "tests/app/ui/contrast.h"

namespace corvane {
namespace {

/// `tint` at `opacity` over `surface`.
QColor mixed(const QColor& tint, double opacity, const QColor& surface) {
    const auto mix = [share = static_cast<float>(opacity)](float over, float under) {
        return over * share + under * (1 - share);
    };
    return QColor::fromRgbF(mix(tint.redF(), surface.redF()), mix(tint.greenF(), surface.greenF()),
                            mix(tint.blueF(), surface.blueF()));
}

class ThemeTest : public ControlTest, public testing::WithParamInterface<bool> {
protected:
    ThemeTest() {
        look.setDark(GetParam());
        load("property var theme: Theme");
    }

    QColor color(const std::string& expression) {
        QQmlExpression evaluation(qmlContext(window->rootObject()), window->rootObject(),
                                  QString::fromStdString("theme." + expression));
        const auto value = evaluation.evaluate().value<QColor>();
        EXPECT_TRUE(value.isValid()) << expression << evaluation.error().toString().toStdString();
        return value;
    }
};

constexpr double readable = 4.5;
const std::vector<std::string> surfaces = {"background", "card", "raised"};
const std::vector<std::string> roles = {"",       "blue",   "cyan",  "green", "lime",
                                        "yellow", "orange", "ember", "red"};

TEST_P(ThemeTest, HasTextsThatCanBeReadOnEverySurface) {
    for (const std::string& surface : surfaces) {
        for (const char* ink : {"text", "secondaryText", "accent"}) {
            EXPECT_GE(contrast(color(ink), color(surface)), readable) << ink << " on " << surface;
        }
        for (const std::string& role : roles) {
            EXPECT_GE(contrast(color("roleTextColor('" + role + "')"), color(surface)), readable)
                << role << " on " << surface;
        }
    }
    EXPECT_GE(contrast(color("accentInk"), color("accent")), readable);
}

TEST_P(ThemeTest, HasTextsThatCanBeReadOnABannerOfTheirRole) {
    constexpr double strongestTint = 0.16;
    for (const std::string& surface : surfaces) {
        for (const std::string& role : roles) {
            const QColor banner = mixed(color("roleColor('" + role + "')"), strongestTint, color(surface));
            EXPECT_GE(contrast(color("roleTextColor('" + role + "')"), banner), readable)
                << role << " on " << surface;
        }
    }
}

TEST_P(ThemeTest, HasTheColorsThatWereAskedFor) {
    EXPECT_EQ(color("roleColor('lime')"), QColor::fromRgbF(0.7F, 0.8F, 0.2F));
    EXPECT_EQ(color("roleColor('ember')"), QColor::fromRgbF(0.95F, 0.4F, 0.15F));
    EXPECT_EQ(color("roleColor('yellow')"), QColor::fromRgbF(0.8F, 0.66F, 0.1F));
}

INSTANTIATE_TEST_SUITE_P(Appearances, ThemeTest, testing::Bool(),
                         [](const auto& instance) { return instance.param ? "Dark" : "Light"; });

using AppearanceTest = ControlTest;

TEST_F(AppearanceTest, IsFollowedAtOnce) {
    load("");
    const QColor light = picture().pixelColor(5, 5);
    look.setDark(true);
    const QColor dark = picture().pixelColor(5, 5);
    EXPECT_GT(light.lightness(), 200);
    EXPECT_LT(dark.lightness(), 60);
}

using LanguageTest = ControlTest;

TEST_F(LanguageTest, IsFollowedAtOnce) {
    load("BodyText { objectName: 'text'; text: Lang.isGerman ? 'Wach bleiben' : 'Stay awake' }");
    EXPECT_EQ(item("text").property("text").toString(), "Stay awake");
    speakGerman();
    EXPECT_EQ(item("text").property("text").toString(), "Wach bleiben");
}

}  // namespace
}  // namespace corvane
