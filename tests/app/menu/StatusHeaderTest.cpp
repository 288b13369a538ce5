#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "app/menu/StatusHeader.h"
#include "tests/app/session/SessionMachine.h"
#include "tests/support/SignalCount.h"

namespace corvane {
namespace {

/// Warm enough for a profile to ask for something.
class StatusHeaderTest : public SessionTest {
protected:
    StatusHeaderTest() : SessionTest(75) { machine.advance(20s); }

    void speak(const char* language) { machine.defaults.set(Lang::setting, std::string(language)); }

    void expectLabel(bool isActive, const char* german, const char* english) {
        EXPECT_EQ(header.active(), isActive);
        speak("de");
        EXPECT_EQ(header.label().toStdString(), german);
        speak("en");
        EXPECT_EQ(header.label().toStdString(), english);
    }
    void expectAwake() { expectLabel(true, "Wach-Session aktiv", "Keep-awake active"); }
    void expectLid() { expectLabel(true, "Zugeklappt wach", "Awake, lid closed"); }
    void expectCooling() { expectLabel(true, "Kühlung aktiv", "Cooling active"); }
    void expectWatching() { expectLabel(true, "Kühlung überwacht", "Cooling on watch"); }
    void expectAutomation() { expectLabel(true, "Automatik aktiv", "Automation active"); }
    void expectInactive() { expectLabel(false, "Inaktiv", "Inactive"); }

    FanController& fan() { return manager().fan(); }

    StatusHeader header{manager(), machine.lang};
};

TEST_F(StatusHeaderTest, IsInactiveToBeginWith) {
    expectInactive();
    EXPECT_EQ(header.sessionLine(), "");
    EXPECT_EQ(header.automationLine(), "");
}

TEST_F(StatusHeaderTest, NamesASession) {
    manager().apply({Kind::network}, std::nullopt);
    expectAwake();
}

TEST_F(StatusHeaderTest, NamesTheClosedLidMode) {
    manager().lid().setEnabled(true);
    expectLid();
}

TEST_F(StatusHeaderTest, NamesABoost) {
    fan().setCoolingMode(CoolingMode::manual);
    fan().setFansEnabled(true);
    machine.advance(2s);
    ASSERT_FALSE(fan().autoEngaged());
    ASSERT_TRUE(fan().isBoosted());
    expectCooling();
}

TEST_F(StatusHeaderTest, NamesCoolingThatIsEngagedThoughTheHelperHoldsNothing) {
    fan().setFansEnabled(true);
    machine.advance(2s);
    ASSERT_TRUE(fan().autoEngaged());
    // As after a release of the helper's own.
    machine.report([] {
        StatusRecord record;
        record.set(StatusKey::isBoosted, false);
        return record;
    });
    machine.advance(1s);
    ASSERT_FALSE(fan().isBoosted());
    expectCooling();
}

TEST_F(StatusHeaderTest, NamesFanControlThatWaitsForHeat) {
    machine.helper.mac.holdSensorsAt(35);
    machine.advance(30s);
    fan().setFansEnabled(true);
    machine.advance(2s);
    expectWatching();
}

TEST_F(StatusHeaderTest, NamesAnAutomationThatOnlyKeepsAwake) {
    machine.applications.start("render");
    manager().triggers().addApp(QStringLiteral("render"), QStringLiteral("Render"));
    manager().triggers().setAutomationEnabled(true);
    expectAutomation();
}

TEST_F(StatusHeaderTest, ShowsTheFirstRuleThatHolds) {
    machine.automate();
    manager().lid().setEnabled(true);
    fan().setFansEnabled(true);
    manager().apply({Kind::system}, std::nullopt);
    machine.advance(2s);
    expectAwake();
    manager().stopSession();
    expectLid();
    manager().lid().setEnabled(false);
    expectCooling();
    manager().triggers().setAutomationEnabled(false);
    machine.helper.mac.holdSensorsAt(35);
    machine.advance(40s);
    expectWatching();
    fan().setFansEnabled(false);
    expectInactive();
}

TEST_F(StatusHeaderTest, SaysHowLongASessionLastsAndUntilWhen) {
    manager().apply({Kind::system}, in(2h));
    machine.advance(1s);
    const std::string until = manager().expiryDescription().toStdString();
    EXPECT_EQ(header.sessionLine().toStdString(), "⏱ 1:59:59 left · until " + until);
    speak("de");
    const std::string bis = manager().expiryDescription().toStdString();
    ASSERT_NE(bis, until);
    EXPECT_EQ(header.sessionLine().toStdString(), "⏱ noch 1:59:59 · bis " + bis);
}

TEST_F(StatusHeaderTest, SaysNothingOfASessionWithoutEnd) {
    manager().apply({Kind::system}, std::nullopt);
    EXPECT_EQ(header.sessionLine(), "");
}

TEST_F(StatusHeaderTest, SaysWhyTheAutomationKeepsAwake) {
    machine.applications.start("render");
    manager().triggers().addApp(QStringLiteral("render"), QStringLiteral("R %1 %2 ender"));
    manager().triggers().setAutomationEnabled(true);
    EXPECT_EQ(header.automationLine().toStdString(), "🤖 Auto keep-awake (R %1 %2 ender)");
    speak("de");
    EXPECT_EQ(header.automationLine().toStdString(), "🤖 Automatik hält wach (R %1 %2 ender)");
}

TEST_F(StatusHeaderTest, AnnouncesWhateverChangesIt) {
    SignalCount changes(header, &StatusHeader::changed);
    const auto expectAnnounced = [&](const char* what) { EXPECT_GE(changes.take(), 1) << what; };
    manager().apply({Kind::system}, in(2h));
    expectAnnounced("a session");
    machine.advance(1s);
    expectAnnounced("its countdown");
    manager().stopSession();
    expectAnnounced("its end");
    manager().lid().setEnabled(true);
    expectAnnounced("the closed-lid mode");
    manager().lid().setEnabled(false);
    expectAnnounced("its end");
    fan().setFansEnabled(true);
    expectAnnounced("the fans' switch");
    fan().setFansEnabled(false);
    expectAnnounced("the fans' switch");
    machine.automate();
    expectAnnounced("the automation");
    manager().triggers().setKeepAwakeOnAC(true);
    expectAnnounced("another reason");
    header.retranslate();
    expectAnnounced("the language");
    manager().drives().setEnabled(true);
    EXPECT_EQ(changes.take(), 0) << "the drives are none of its business";
}

}  // namespace
}  // namespace corvane
