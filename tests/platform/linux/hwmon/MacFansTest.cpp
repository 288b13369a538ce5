#include <cerrno>

#include <gmock/gmock.h>

#include "tests/platform/linux/hwmon/HwmonRig.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

class MacSmcFan : public testing::Test {
protected:
    FakeHardware::Attribute& attribute(const std::string& name) {
        return rig.hardware.at(machine[0].path(name));
    }

    machines::Machine machine = machines::macMini();
    HwmonRig rig{machine};
    SmcClient smc = rig.connect();
};

TEST_F(MacSmcFan, IsTakenOverAtTheLargerOfItsTargetAndSpeed) {
    attribute("fan1_input").text = "1850\n";
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("fan1_target=1850"));
    EXPECT_EQ(smc.writeFlt("F0Tg", 1700.0F), SmcResult::success);
    EXPECT_EQ(smc.writeFlt("F0Tg", 3000.0F), SmcResult::success);
    EXPECT_EQ(smc.writeFlt("F0Tg", 8000.0F), SmcResult::success);
    EXPECT_THAT(rig.hardware.takeWrites(),
                ElementsAre("fan1_target=1850", "fan1_target=3000", "fan1_target=4499"));
    EXPECT_THAT(smc.ui8("F0Md"), Optional(1));
    EXPECT_THAT(smc.flt("F0Tg"), Optional(4499.0F));
}

TEST_F(MacSmcFan, IsGivenBackWithAZeroAfterAValidTarget) {
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    rig.hardware.takeWrites();
    EXPECT_EQ(smc.writeUi8("F0Md", 0), SmcResult::success);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("fan1_target=1700", "fan1_target=0"));
    EXPECT_THAT(smc.ui8("F0Md"), Optional(0));
    EXPECT_EQ(rig.journal(), "");
}

TEST_F(MacSmcFan, IsDrivenFullyWhileItCannotBeGivenBack) {
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    attribute("fan1_target").writeError = EIO;
    rig.hardware.takeWrites();
    EXPECT_EQ(smc.writeUi8("F0Md", 0), SmcResult::notWritable);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("fan1_target=1700", "fan1_target=4499"));
    EXPECT_THAT(smc.ui8("F0Md"), Optional(1));
    attribute("fan1_target").writeError = 0;
    rig.time.advance(std::chrono::seconds(2));
    EXPECT_THAT(smc.ui8("F0Md"), Optional(0));
    EXPECT_EQ(rig.journal(), "");
}

TEST_F(MacSmcFan, IsGivenBackByTheNextProcessThoughItsModeCannotBeRead) {
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    SmcClient next = rig.connect();
    EXPECT_THAT(next.ui8("F0Md"), Optional(1)) << "nothing proves that it is back";
    rig.hardware.takeWrites();
    EXPECT_EQ(next.writeUi8("F0Md", 0), SmcResult::success);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("fan1_target=1700", "fan1_target=0"));
    EXPECT_THAT(next.ui8("F0Md"), Optional(0));
}

TEST_F(MacSmcFan, IsGivenBackOnceMoreAfterAnotherProcessDidSo) {
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    SmcClient diagnostics = rig.connect(FanOwner::diagnostics);
    EXPECT_EQ(diagnostics.writeUi8("F0Md", 0), SmcResult::success);
    rig.hardware.takeWrites();
    EXPECT_EQ(smc.writeFlt("F0Tg", 3000.0F), SmcResult::notWritable);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("fan1_target=1700", "fan1_target=0"))
        << "its mode cannot be read";
    EXPECT_THAT(smc.ui8("F0Md"), Optional(0));
}

TEST(MacSmcFanKinds, TakeAStandingFanOverAtItsMinimum) {
    HwmonRig rig(machines::macBookPro16());
    SmcClient smc = rig.connect();
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    EXPECT_EQ(smc.writeUi8("F1Md", 1), SmcResult::success);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("fan1_target=1499", "fan2_target=1499"));
}

TEST(MacSmcFanKinds, RefuseManualModeWithoutLimits) {
    machines::Machine machine = machines::macMini();
    machine[0].attributes[3].text = "0\n";
    HwmonRig rig(machine);
    SmcClient smc = rig.connect();
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::badArgument);
    EXPECT_THAT(rig.hardware.takeWrites(), IsEmpty());
    EXPECT_EQ(smc.readResult("F0Mx"), SmcResult::notReadable);
}

TEST(MacSmcFanKinds, AreNotTakenWhileTheirSpeedIsNonsense) {
    HwmonRig rig(machines::macMini());
    SmcClient smc = rig.connect();
    rig.hardware.at(machines::macMini()[0].path("fan1_input")).text = "4294967000\n";
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::notWritable);
    EXPECT_THAT(rig.hardware.takeWrites(), IsEmpty());
    EXPECT_EQ(rig.journal(), "");
}

class AppleSmcFan : public testing::Test {
protected:
    FakeHardware::Attribute& attribute(const std::string& name) {
        return rig.hardware.at(machine[0].path(name));
    }

    machines::Machine machine = machines::intelMac();
    HwmonRig rig{machine};
    SmcClient smc = rig.connect();
};

TEST_F(AppleSmcFan, IsTakenOverDrivenAndGivenBack) {
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    EXPECT_THAT(
        rig.journal(),
        "fan\thelper\tdevices/platform/applesmc.768\tapplesmc\t1\tmanual=0\toutput=2000\tspeed=2010\tend\n");
    EXPECT_EQ(smc.writeFlt("F0Tg", 2000.0F), SmcResult::success);
    EXPECT_EQ(smc.writeFlt("F0Tg", 4000.5F), SmcResult::success);
    EXPECT_THAT(rig.hardware.takeWrites(),
                ElementsAre("fan1_manual=1", "fan1_output=2010", "fan1_output=2010", "fan1_output=4001"));
    EXPECT_THAT(smc.ui8("F0Md"), Optional(1));
    EXPECT_EQ(smc.writeUi8("F0Md", 0), SmcResult::success);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("fan1_manual=0"));
    EXPECT_THAT(smc.ui8("F0Md"), Optional(0));
}

TEST_F(AppleSmcFan, StaysWithItsFirmwareWhenManualDoesNotHold) {
    attribute("fan1_manual").onWrite = [](const std::string&) { return "0"; };
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::notWritable);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("fan1_manual=1", "fan1_manual=0"));
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::notWritable);
    EXPECT_THAT(rig.hardware.takeWrites(), IsEmpty());
}

TEST_F(AppleSmcFan, IsYieldedToItsController) {
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    attribute("fan1_manual").text = "0\n";
    rig.hardware.takeWrites();
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::notWritable);
    EXPECT_THAT(rig.hardware.takeWrites(), IsEmpty());
    EXPECT_THAT(smc.ui8("F0Md"), Optional(0));
}

TEST_F(AppleSmcFan, RunsFullyWhileItCannotBeGivenBack) {
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    attribute("fan1_manual").writeError = EIO;
    rig.hardware.takeWrites();
    EXPECT_EQ(smc.writeUi8("F0Md", 0), SmcResult::notWritable);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("fan1_manual=0", "fan1_output=6200"));
    EXPECT_THAT(smc.ui8("F0Md"), Optional(1));
}

TEST_F(AppleSmcFan, IsLeftAloneWhenItWasManualAlready) {
    attribute("fan1_manual").text = "1\n";
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::notWritable);
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::notWritable);
    EXPECT_THAT(rig.hardware.takeWrites(), IsEmpty());
    EXPECT_EQ(rig.journal(), "");
    EXPECT_THAT(rig.log.lines(),
                ElementsAre("Corvane daemon: fan 0 (applesmc fan1): not taken over: it is under manual "
                            "control already, and nothing tells the way back"));
}

}  // namespace
}  // namespace corvane
