#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "smc/diagnostics/diagnostics.h"
#include "tests/diagnostics/DiagnosticsFixture.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SmcWrite : public testing::Test {
protected:
    SmcWrite() {
        platform.pauses.isHolding = true;  // a raw write is done at once, there is nothing to restore
        platform.recordWrites();
    }

    int run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "--smc-write");
        return runSmcWrite(platform, arguments);
    }

    DiagnosticsPlatform platform;
};

TEST_F(SmcWrite, WritesAByteWhereTheTagSaysSoAndFpe2Otherwise) {
    EXPECT_EQ(run({"F0Md:u8", "1", "F0Tg", "3000"}), 0);
    EXPECT_THAT(platform.writes, ElementsAre("F0Md=01:00", "F0Tg=2ee00000:00"));
    EXPECT_TRUE(platform.machine.mac.isFanForced(0));
    EXPECT_EQ(platform.recording.errors, "");
}

TEST_F(SmcWrite, TellsOfAKeyThatTakesFpe2ForAnotherNumber) {
    EXPECT_EQ(run({"F0Md:u8", "1", "F0Tg", "0", "F0Tg", "-5", "nono", "7", "F0Mx", "7"}), 1);
    EXPECT_EQ(platform.recording.output, "");
    EXPECT_EQ(run({"F0Tg", "3000"}), 0);
    EXPECT_EQ(platform.recording.output,
              "note: F0Tg is of type \"flt \" and takes 3000, written as fpe2, for another number\n");
}

TEST_F(SmcWrite, TakesAnyOtherTagForRpm) {
    EXPECT_EQ(run({"F0Tg:U8", "3000", "F0Tg:fpe2", "3000", "F0Tg:", "3000", "F0Tg:u8:", "3000"}), 0);
    EXPECT_THAT(platform.writes,
                ElementsAre("F0Tg=2ee00000:00", "F0Tg=2ee00000:00", "F0Tg=2ee00000:00", "F0Tg=2ee00000:00"));
}

TEST_F(SmcWrite, SplitsAtTheFirstColonOnly) {
    EXPECT_EQ(run({":u8", "1", "F0M:d:u8", "1"}), 1);
    EXPECT_EQ(platform.recording.errors, "bad key: \nbad key: F0M\n");
    EXPECT_THAT(platform.writes, IsEmpty());
}

TEST_F(SmcWrite, WantsKeysOfExactlyFourCharacters) {
    EXPECT_EQ(run({"F0M", "1", "F0Md1:u8", "1", "", "1", "üü:u8", "1"}), 1);
    EXPECT_EQ(platform.recording.errors, "bad key: F0M\nbad key: F0Md1\nbad key: \nbad key: üü\n");
    EXPECT_THAT(platform.writes, IsEmpty());
}

TEST_F(SmcWrite, TakesBytesAsDecimalNumbersFrom0To255) {
    EXPECT_EQ(run({"Ftst:u8", "0", "Ftst:u8", "255", "Ftst:u8", "007"}), 0);
    EXPECT_THAT(platform.writes, ElementsAre("Ftst=00:00", "Ftst=ff:00", "Ftst=07:00"));
}

TEST_F(SmcWrite, RefusesEveryOtherByte) {
    for (const char* text :
         {"256", "-1", "+1", "0x1", "1.0", " 1", "1 ", "", "one", "99999999999999999999"}) {
        platform.recording.errors.clear();
        EXPECT_EQ(run({"Ftst:u8", text}), 1) << text;
        EXPECT_EQ(platform.recording.errors, std::string("bad u8 value: ") + text + "\n");
    }
    EXPECT_THAT(platform.writes, IsEmpty());
}

TEST_F(SmcWrite, TakesRpmWithALeadingPlusAndClampsWhatFpe2CannotHold) {
    EXPECT_EQ(run({"F0Tg", "+3000", "F0Tg", "-5", "F0Tg", "2147483647", "F0Tg", "-2147483648"}), 0);
    EXPECT_THAT(platform.writes,
                ElementsAre("F0Tg=2ee00000:00", "F0Tg=00000000:00", "F0Tg=fffc0000:00", "F0Tg=00000000:00"));
}

TEST_F(SmcWrite, RefusesEveryOtherRpm) {
    for (const char* text :
         {"2147483648", "-2147483649", "++1", "+-1", "+", "-", "3e3", "3000.5", "", " 1"}) {
        platform.recording.errors.clear();
        EXPECT_EQ(run({"F0Tg", text}), 1) << text;
        EXPECT_EQ(platform.recording.errors, std::string("bad rpm value: ") + text + "\n");
    }
    EXPECT_THAT(platform.writes, IsEmpty());
}

TEST_F(SmcWrite, ReportsAWriteThatTheControllerRefusesWithItsCode) {
    EXPECT_EQ(run({"F9Md:u8", "1", "F0Mx", "+3000"}), 1);
    EXPECT_EQ(platform.recording.errors, "write F9Md=1 failed: rc=132\nwrite F0Mx=3000 failed: rc=134\n");
    EXPECT_EQ(platform.recording.output, "");
}

TEST_F(SmcWrite, GoesOnWithTheNextPairAfterAnError) {
    EXPECT_EQ(run({"bad", "1", "F0Md:u8", "x", "F0Tg", "x", "nono", "1", "F0Md:u8", "1"}), 1);
    EXPECT_EQ(platform.recording.errors,
              "bad key: bad\nbad u8 value: x\nbad rpm value: x\nwrite nono=1 failed: rc=132\n");
    EXPECT_THAT(platform.writes, ElementsAre("F0Md=01:00"));
}

TEST_F(SmcWrite, IgnoresALastArgumentWithoutAPartner) {
    EXPECT_EQ(run({"F0Md:u8", "1", "bad"}), 0);
    EXPECT_THAT(platform.writes, ElementsAre("F0Md=01:00"));
    EXPECT_EQ(platform.recording.errors, "");
}

TEST_F(SmcWrite, EndsWithStatus2WhenTheControllerCannotBeOpened) {
    platform.machine.mac.setSmcPresent(false);
    EXPECT_EQ(run({"bad", "1"}), 2);
    EXPECT_EQ(platform.recording.errors, "csmc_open failed: -1\n");
}

TEST_F(SmcWrite, LeavesNoConnectionBehind) {
    EXPECT_EQ(run({"F0Md:u8", "1"}), 0);
    EXPECT_EQ(csmc_open(), SmcConnection::noService);
}

}  // namespace
}  // namespace corvane
