#include <cerrno>
#include <limits>

#include <gmock/gmock.h>

#include "tests/platform/linux/hwmon/HwmonRig.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Optional;

/// One fan whose chip is in mode 5 and holds duty 90.
class PwmFan : public testing::Test {
protected:
    FakeHardware::Attribute& attribute(const std::string& name) { return rig.hardware.at(chip.path(name)); }

    machines::ChipSpec chip = machines::pwmChip("nct6779", 5, 90, 800);
    HwmonRig rig{{chip}};
    SmcClient smc = rig.connect();
};

TEST_F(PwmFan, IsTakenOverAtTheDutyItHad) {
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1_enable=1", "pwm1=90"));
    EXPECT_THAT(smc.ui8("F0Md"), Optional(1));
}

TEST_F(PwmFan, IsJournalledWhileHeldAndNoLonger) {
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    EXPECT_EQ(rig.journal(), "fan\thelper\tdevices/platform/nct6779\tnct6779\t1\tpwm=90\tenable=5\tend\n");
    EXPECT_EQ(smc.writeUi8("F0Md", 0), SmcResult::success);
    EXPECT_EQ(rig.journal(), "");
}

TEST_F(PwmFan, MapsSpeedsToDutiesAndRoundsUp) {
    EXPECT_THAT(smc.flt("F0Mx"), Optional(3000.0F));
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    rig.hardware.takeWrites();
    for (const float rpm : {1200.0F, 1201.0F, 3000.0F, 9000.0F}) {
        EXPECT_EQ(smc.writeFlt("F0Tg", rpm), SmcResult::success);
    }
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1=102", "pwm1=103", "pwm1=255", "pwm1=255"));
    EXPECT_THAT(smc.flt("F0Tg"), Optional(3000.0F));
}

TEST_F(PwmFan, NeverRunsSlowerThanItsFirmwareHeldIt) {
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    rig.hardware.takeWrites();
    for (const float rpm : {1000.0F, 0.0F, -500.0F, 1e-40F}) {
        EXPECT_EQ(smc.writeFlt("F0Tg", rpm), SmcResult::success);
    }
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1=90", "pwm1=90", "pwm1=90", "pwm1=90"));
    EXPECT_THAT(smc.flt("F0Tg"), Optional(testing::FloatNear(1058.8F, 0.1F)));
}

TEST_F(PwmFan, RefusesTargetsAndModesThatAreNone) {
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    rig.hardware.takeWrites();
    EXPECT_EQ(smc.writeFlt("F0Tg", std::numeric_limits<float>::quiet_NaN()), SmcResult::badArgument);
    EXPECT_EQ(smc.writeFlt("F0Tg", std::numeric_limits<float>::infinity()), SmcResult::badArgument);
    EXPECT_EQ(smc.writeUi8("F0Md", 3), SmcResult::badArgument);
    EXPECT_THAT(rig.hardware.takeWrites(), IsEmpty());
}

TEST_F(PwmFan, TakesNoTargetWhileItIsWithItsFirmware) {
    EXPECT_EQ(smc.writeFlt("F0Tg", 2000.0F), SmcResult::notWritable);
    EXPECT_EQ(smc.writeFlt("F0Tg", 0.0F), SmcResult::success) << "asks for nothing";
    EXPECT_THAT(rig.hardware.takeWrites(), IsEmpty());
}

TEST_F(PwmFan, CostsOneReadToKeepAndOneWriteToDrive) {
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    rig.hardware.takeWrites();
    attribute("pwm1").reads = 0;
    attribute("pwm1_enable").reads = 0;
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    EXPECT_EQ(smc.writeFlt("F0Tg", 1500.0F), SmcResult::success);
    EXPECT_EQ(attribute("pwm1").reads, 0);
    EXPECT_EQ(attribute("pwm1_enable").reads, 1);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1=128"));
}

TEST_F(PwmFan, GetsItsOwnModeBack) {
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    EXPECT_EQ(smc.writeFlt("F0Tg", 2000.0F), SmcResult::success);
    rig.hardware.takeWrites();
    EXPECT_EQ(smc.writeUi8("F0Md", 0), SmcResult::success);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1_enable=5"));
    EXPECT_THAT(smc.ui8("F0Md"), Optional(0));
    EXPECT_THAT(smc.flt("F0Tg"), Optional(0.0F));
}

TEST_F(PwmFan, IsLeftAloneWhenItIsGivenBackWithoutHavingBeenTaken) {
    EXPECT_EQ(smc.writeUi8("F0Md", 0), SmcResult::success);
    EXPECT_THAT(rig.hardware.takeWrites(), IsEmpty());
    EXPECT_EQ(rig.journal(), "");
}

TEST_F(PwmFan, StaysWithItsFirmwareWhenItsModeSnapsBack) {
    attribute("pwm1_enable").onWrite = [](const std::string&) { return "5"; };
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::notWritable);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1_enable=1", "pwm1_enable=5"));
    EXPECT_THAT(smc.ui8("F0Md"), Optional(0));
    EXPECT_EQ(rig.journal(), "");

    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::notWritable);
    EXPECT_EQ(smc.writeFlt("F0Tg", 2000.0F), SmcResult::notWritable);
    EXPECT_THAT(rig.hardware.takeWrites(), IsEmpty()) << "not tried again";
    EXPECT_THAT(rig.log.lines(),
                ElementsAre("Corvane daemon: fan 0 (nct6779 fan1): stays with its firmware: it "
                            "refuses manual control"));
}

TEST_F(PwmFan, IsRestoredWhenItsDutyIsRefused) {
    attribute("pwm1").writeError = EIO;
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::notWritable);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1_enable=1", "pwm1=90", "pwm1_enable=5"));
    EXPECT_THAT(smc.ui8("F0Md"), Optional(0));
    EXPECT_EQ(rig.journal(), "");
}

TEST_F(PwmFan, IsNotTakenWhenItsDutyCannotBeRead) {
    attribute("pwm1").readError = EIO;
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::notWritable);
    EXPECT_THAT(rig.hardware.takeWrites(), IsEmpty());
    EXPECT_EQ(rig.journal(), "");
    attribute("pwm1").readError = 0;
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success) << "nothing was refused for good";
}

TEST_F(PwmFan, IsYieldedToAControllerThatTakesItBack) {
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    attribute("pwm1_enable").text = "5\n";
    rig.hardware.takeWrites();
    for (int tick = 0; tick < 3; ++tick) {
        EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::notWritable);
        EXPECT_EQ(smc.writeFlt("F0Tg", 2000.0F), SmcResult::notWritable);
    }
    EXPECT_THAT(rig.hardware.takeWrites(), IsEmpty());
    EXPECT_THAT(smc.ui8("F0Md"), Optional(0)) << "it really is as it was";
    EXPECT_EQ(rig.log.lines().size(), 1U);

    EXPECT_EQ(smc.writeUi8("F0Md", 0), SmcResult::success);
    EXPECT_EQ(rig.journal(), "");
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success) << "may be tried again after a release";
}

TEST_F(PwmFan, IsNotCalledReleasedWhenItsControllerChoseAnotherMode) {
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    attribute("pwm1_enable").text = "2\n";
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::notWritable);
    EXPECT_THAT(smc.ui8("F0Md"), Optional(1));
    EXPECT_EQ(smc.writeUi8("F0Md", 0), SmcResult::success);
    EXPECT_EQ(attribute("pwm1_enable").text, "5\n");
    EXPECT_THAT(smc.ui8("F0Md"), Optional(0));
}

TEST_F(PwmFan, RunsFullyAndIsTriedAgainWhenItCannotBeGivenBack) {
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    EXPECT_EQ(smc.writeFlt("F0Tg", 1500.0F), SmcResult::success);
    attribute("pwm1_enable").writeError = EIO;
    rig.hardware.takeWrites();
    EXPECT_EQ(smc.writeUi8("F0Md", 0), SmcResult::notWritable);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1_enable=5", "pwm1=255"));
    EXPECT_THAT(smc.ui8("F0Md"), Optional(1));
    EXPECT_THAT(rig.journal(), HasSubstr("enable=5"));

    EXPECT_EQ(smc.writeFlt("F0Tg", 0.0F), SmcResult::success);
    EXPECT_THAT(rig.hardware.takeWrites(), IsEmpty()) << "a stuck fan is not slowed down";

    rig.time.advance(std::chrono::seconds(2));
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1_enable=5", "pwm1=255"));
    attribute("pwm1_enable").writeError = 0;
    rig.time.advance(std::chrono::seconds(2));
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1_enable=5"));
    EXPECT_THAT(smc.ui8("F0Md"), Optional(0));
    EXPECT_EQ(rig.journal(), "");

    rig.time.advance(std::chrono::seconds(60));
    EXPECT_THAT(rig.hardware.takeWrites(), IsEmpty()) << "the retries have ended";
    EXPECT_EQ(rig.log.lines().size(), 2U) << "one line when it stuck, one when it came loose";
}

TEST_F(PwmFan, IsNotBelievedToBeBackUntilItsModeReadsBack) {
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    attribute("pwm1_enable").onWrite = [](const std::string&) { return "1"; };
    EXPECT_EQ(smc.writeUi8("F0Md", 0), SmcResult::notWritable);
    EXPECT_THAT(smc.ui8("F0Md"), Optional(1));
    attribute("pwm1_enable").onWrite = nullptr;
    EXPECT_EQ(smc.writeUi8("F0Md", 0), SmcResult::success) << "the next write of mode 0 repeats it, too";
    EXPECT_THAT(smc.ui8("F0Md"), Optional(0));
}

TEST_F(PwmFan, IsGivenBackWhenItNoLongerTakesItsSpeed) {
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    rig.hardware.takeWrites();
    attribute("pwm1").writeError = EIO;
    EXPECT_EQ(smc.writeFlt("F0Tg", 2000.0F), SmcResult::notWritable);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1=170", "pwm1_enable=5"));
    EXPECT_THAT(smc.ui8("F0Md"), Optional(0));
    EXPECT_EQ(rig.journal(), "");
}

TEST_F(PwmFan, IsGivenBackWhenItsModeCanNoLongerBeRead) {
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    rig.hardware.takeWrites();
    attribute("pwm1_enable").readError = EIO;
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::notWritable);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1_enable=5", "pwm1=255")) << "and not believed";
    EXPECT_THAT(smc.ui8("F0Md"), Optional(1));
    attribute("pwm1_enable").readError = 0;
    rig.time.advance(std::chrono::seconds(2));
    EXPECT_THAT(smc.ui8("F0Md"), Optional(0));
}

TEST_F(PwmFan, IsGivenBackWhenItsDriverWasReloaded) {
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    rig.hardware.unplug(chip);
    EXPECT_EQ(smc.writeFlt("F0Tg", 2000.0F), SmcResult::notWritable);
    EXPECT_THAT(smc.ui8("F0Md"), Optional(1)) << "nothing proves that it is back";
    chip.number = 6;
    rig.hardware.plug(chip);
    rig.hardware.takeWrites();
    rig.time.advance(std::chrono::seconds(4));
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1_enable=5"));
    EXPECT_THAT(smc.ui8("F0Md"), Optional(0));
    EXPECT_EQ(rig.journal(), "");
}

TEST(PwmFanKinds, KeepAnUnusualFirmwareMode) {
    const machines::ChipSpec chip = machines::pwmChip("nct6687", 99, 110, 900);
    HwmonRig rig({chip});
    SmcClient smc = rig.connect();
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    EXPECT_EQ(smc.writeUi8("F0Md", 0), SmcResult::success);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1_enable=1", "pwm1=110", "pwm1_enable=99"));
}

TEST(PwmFanKinds, HoldFullDutyInPlaceOfTheFullSpeedMode) {
    HwmonRig rig({machines::pwmChip("nct6779", 0, 20, 900)});
    SmcClient smc = rig.connect();
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    EXPECT_EQ(smc.writeFlt("F0Tg", 100.0F), SmcResult::success);
    EXPECT_EQ(smc.writeUi8("F0Md", 0), SmcResult::success);
    EXPECT_THAT(rig.hardware.takeWrites(),
                ElementsAre("pwm1_enable=1", "pwm1=255", "pwm1=255", "pwm1_enable=0"));
}

TEST(PwmFanKinds, HoldFullDutyWhereTheFirmwaresDutyCannotBeRead) {
    for (const char* name : {"thinkpad", "it8705", "it8712", "it8716", "it8718", "it8720"}) {
        HwmonRig rig({machines::pwmChip(name, 2, 100, 900)});
        SmcClient smc = rig.connect();
        EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success) << name;
        EXPECT_EQ(smc.writeFlt("F0Tg", 1000.0F), SmcResult::success) << name;
        EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1_enable=1", "pwm1=255", "pwm1=255")) << name;
        EXPECT_THAT(smc.flt("F0Tg"), Optional(3000.0F)) << name;
    }
}

TEST(PwmFanKinds, LeaveAFanOfTheThermalGovernorToIt) {
    for (const int enable : {0, 1, 2}) {
        HwmonRig rig({machines::pwmChip("pwmfan", enable, 40, 900)});
        SmcClient smc = rig.connect();
        EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::notWritable) << enable;
        EXPECT_THAT(rig.hardware.takeWrites(), IsEmpty()) << enable;
        EXPECT_THAT(smc.flt("F0Ac"), Optional(900.0F)) << enable;
    }
}

TEST(PwmFanKinds, LeaveAFanAloneThatWasManualAlready) {
    HwmonRig rig({machines::pwmChip("nct6779", 1, 77, 900)});
    SmcClient smc = rig.connect();
    for (int tick = 0; tick < 3; ++tick) {
        EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::notWritable);
        EXPECT_EQ(smc.writeFlt("F0Tg", 3000.0F), SmcResult::notWritable);
        EXPECT_EQ(smc.writeUi8("F0Md", 0), SmcResult::success);
    }
    EXPECT_THAT(rig.hardware.takeWrites(), IsEmpty());
    EXPECT_THAT(smc.ui8("F0Md"), Optional(0)) << "Corvane does not hold it";
    EXPECT_EQ(rig.journal(), "");
    EXPECT_THAT(rig.log.lines(),
                ElementsAre("Corvane daemon: fan 0 (nct6779 fan1): not taken over: it is under manual "
                            "control already, and nothing tells the way back"));
}

TEST(PwmFanKinds, DoNotOfferAChipThatTakesNoManualMode) {
    const machines::ChipSpec chip = machines::pwmChip("asus", 2, 128, 2600);
    HwmonRig rig({chip});
    SmcClient smc = rig.connect();
    FakeHardware::Attribute& enable = rig.hardware.at(chip.path("pwm1_enable"));
    enable.writeError = EINVAL;
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::notWritable);
    EXPECT_THAT(smc.ui8("F0Md"), Optional(0)) << "it reads as it did before";
    EXPECT_EQ(enable.text, "2\n");
    EXPECT_EQ(rig.journal(), "");
}

TEST(PwmFanKinds, UseADriversOwnLimits) {
    machines::ChipSpec chip = machines::pwmChip("nct6779", 5, 90, 800);
    chip.attributes.push_back({"fan1_min", "400\n"});
    chip.attributes.push_back({"fan1_max", "2100\n"});
    HwmonRig rig({chip});
    SmcClient smc = rig.connect();
    EXPECT_THAT(smc.flt("F0Mn"), Optional(400.0F));
    EXPECT_THAT(smc.flt("F0Mx"), Optional(2100.0F));
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    rig.hardware.takeWrites();
    EXPECT_EQ(smc.writeFlt("F0Tg", 1420.0F), SmcResult::success);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1=153"));
}

TEST(PwmFanKinds, DoNotTrustLimitsThatMakeNoSense) {
    for (const char* max : {"0\n", "300\n", "4294967000\n", "unknown\n"}) {
        machines::ChipSpec chip = machines::pwmChip("nct6779", 5, 90, 3034);
        chip.attributes.push_back({"fan1_min", "400\n"});
        chip.attributes.push_back({"fan1_max", max});
        HwmonRig rig({chip});
        SmcClient smc = rig.connect();
        EXPECT_THAT(smc.flt("F0Mn"), Optional(0.0F)) << max;
        EXPECT_THAT(smc.flt("F0Mx"), Optional(3034.0F)) << max;
    }
}

class ThinkPadFan : public testing::Test {
protected:
    ThinkPadFan() {
        rig.hardware.link(chip.device + "/driver", "bus/platform/drivers/thinkpad_hwmon");
        rig.hardware.add("bus/platform/drivers/thinkpad_hwmon/fan_watchdog", "0\n", 0644);
    }

    FakeHardware::Attribute& enable() { return rig.hardware.at(chip.path("pwm1_enable")); }

    machines::ChipSpec chip = machines::pwmChip("thinkpad", 2, 255, 3855);
    HwmonRig rig{{chip}};
};

TEST_F(ThinkPadFan, IsGuardedByItsDriversWatchdogWhileHeld) {
    SmcClient smc = rig.connect();
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("fan_watchdog=30", "pwm1_enable=1", "pwm1=255"));
    EXPECT_EQ(smc.writeUi8("F0Md", 0), SmcResult::success);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1_enable=2", "fan_watchdog=0"));
    EXPECT_THAT(smc.ui8("F0Md"), Optional(0));
}

TEST_F(ThinkPadFan, IsGivenBackByAnEntryThatDoesNotTellItsWatchdog) {
    rig.folder.write("fans", "fan\thelper\tdevices/platform/thinkpad\tthinkpad\t1\tpwm=90\tenable=2\tend\n");
    enable().text = "1\n";
    SmcClient smc = rig.connect();
    EXPECT_THAT(smc.ui8("F0Md"), Optional(1));
    EXPECT_EQ(smc.writeUi8("F0Md", 0), SmcResult::success);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1_enable=2", "fan_watchdog=0"));
}

TEST_F(ThinkPadFan, IsNotOfferedWhenItsDriverForbidsControl) {
    SmcClient smc = rig.connect();
    enable().writeError = EPERM;
    rig.hardware.at(chip.path("pwm1")).writeError = EPERM;
    rig.hardware.at("bus/platform/drivers/thinkpad_hwmon/fan_watchdog").writeError = EPERM;
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::notWritable);
    EXPECT_EQ(enable().text, "2\n");
    EXPECT_THAT(smc.ui8("F0Md"), Optional(0));
    EXPECT_EQ(rig.journal(), "");
    EXPECT_EQ(rig.log.lines().size(), 1U);
}

TEST_F(ThinkPadFan, IsLeftAloneInItsFullSpeedModeThatNoDutyReaches) {
    enable().text = "0\n";
    SmcClient smc = rig.connect();
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::notWritable);
    EXPECT_THAT(rig.hardware.takeWrites(), IsEmpty());
    EXPECT_THAT(smc.ui8("F0Md"), Optional(0));
}

}  // namespace
}  // namespace corvane
