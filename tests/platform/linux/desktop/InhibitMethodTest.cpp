#include <string>

#include <gtest/gtest.h>

#include "platform/linux/desktop/InhibitMethod.h"

namespace corvane {
namespace {

/// Who is asked, and with which flags; "nobody".
template <typename... Names>
std::string asked(IdleKind kind, const Names&... names) {
    const InhibitMethod* method = inhibitMethodOnSessionBus({{names, ":1.1"}...}, kind);
    if (method == nullptr) {
        return "nobody";
    }
    return method->flags == 0 ? method->interface
                              : std::string(method->interface) + ' ' + std::to_string(method->flags);
}

constexpr const char* gnome = "org.gnome.SessionManager";
constexpr const char* kde = "org.kde.Solid.PowerManagement";
constexpr const char* powerManagement = "org.freedesktop.PowerManagement";
constexpr const char* screenSaver = "org.freedesktop.ScreenSaver";

TEST(InhibitMethodTest, IsTheSessionManagersWhereverThereIsOne) {
    EXPECT_EQ(asked(IdleKind::system, gnome, kde, powerManagement, screenSaver),
              "org.gnome.SessionManager 4");
    EXPECT_EQ(asked(IdleKind::display, gnome), "org.gnome.SessionManager 8");
}

TEST(InhibitMethodTest, IsDividedBetweenTwoServicesUnderKde) {
    EXPECT_EQ(asked(IdleKind::system, kde, powerManagement, screenSaver),
              "org.freedesktop.PowerManagement.Inhibit");
    EXPECT_EQ(asked(IdleKind::display, kde, powerManagement, screenSaver), "org.freedesktop.ScreenSaver");
}

TEST(InhibitMethodTest, IsTheLoginManagersForThePartThatIsMissingUnderKde) {
    EXPECT_EQ(asked(IdleKind::system, kde, screenSaver), "nobody");
    EXPECT_EQ(asked(IdleKind::display, kde, powerManagement), "nobody");
}

TEST(InhibitMethodTest, IsOneForBothKindsWithAPowerManagerAlone) {
    EXPECT_EQ(asked(IdleKind::system, powerManagement), "org.freedesktop.PowerManagement.Inhibit");
    EXPECT_EQ(asked(IdleKind::display, powerManagement, screenSaver),
              "org.freedesktop.PowerManagement.Inhibit");
}

TEST(InhibitMethodTest, IsTheLoginManagersWithoutAnyOfThem) {
    EXPECT_EQ(asked(IdleKind::system), "nobody");
    EXPECT_EQ(asked(IdleKind::display, screenSaver), "nobody");
    for (const IdleKind kind : {IdleKind::system, IdleKind::display}) {
        EXPECT_EQ(inhibitMethodOnSystemBus({}, kind), nullptr);
        const InhibitMethod* method = inhibitMethodOnSystemBus({{"org.freedesktop.login1", ":1.1"}}, kind);
        ASSERT_NE(method, nullptr);
        EXPECT_EQ(method->form, InhibitMethod::Form::lock);
    }
}

}  // namespace
}  // namespace corvane
