#include <cerrno>

#include <gmock/gmock.h>

#include "tests/platform/linux/hwmon/HwmonRig.h"

namespace corvane {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Optional;

/// One fan whose chip is in mode 5 and holds duty 90, and processes that come and go.
class FanAfterACrash : public testing::Test {
protected:
    FakeHardware::Attribute& attribute(const std::string& name) { return rig.hardware.at(chip.path(name)); }

    /// A process that takes the fan over and then ends without giving it back.
    void crashWhileForced(FanOwner owner) {
        SmcClient smc = rig.connect(owner);
        EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
        EXPECT_EQ(smc.writeFlt("F0Tg", 2000.0F), SmcResult::success);
        rig.hardware.takeWrites();
    }

    machines::ChipSpec chip = machines::pwmChip("nct6779", 5, 90, 800);
    HwmonRig rig{{chip}};
};

TEST_F(FanAfterACrash, GetsTheModeBackThatItHadBeforeTheDeadProcess) {
    crashWhileForced(FanOwner::helper);
    SmcClient next = rig.connect();
    EXPECT_THAT(next.ui8("F0Md"), Optional(1));
    EXPECT_THAT(rig.hardware.takeWrites(), IsEmpty()) << "opening writes nothing";
    EXPECT_EQ(next.writeUi8("F0Md", 0), SmcResult::success);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1_enable=5"));
    EXPECT_THAT(next.ui8("F0Md"), Optional(0));
    EXPECT_EQ(rig.journal(), "");
}

TEST_F(FanAfterACrash, KeepsItsOriginalsWhenTheNextProcessTakesItOnAtOnce) {
    crashWhileForced(FanOwner::helper);
    SmcClient next = rig.connect();
    EXPECT_EQ(next.writeUi8("F0Md", 1), SmcResult::success);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1_enable=1", "pwm1=90"))
        << "90 is what the firmware held, not the 170 of the dead process";
    EXPECT_THAT(rig.journal(), HasSubstr("pwm=90\tenable=5"));
    EXPECT_EQ(next.writeUi8("F0Md", 0), SmcResult::success);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1_enable=5"));
}

TEST_F(FanAfterACrash, IsFoundUnderItsNewNumber) {
    crashWhileForced(FanOwner::helper);
    rig.hardware.unplug(chip);
    chip.number = 4;
    chip.attributes[2].text = "1\n";
    rig.hardware.plug(machines::pwmChip("aquaero", 2, 50, 600));
    rig.hardware.plug(chip);
    SmcClient next = rig.connect();
    EXPECT_THAT(next.ui8("F0Md"), Optional(0)) << "another chip now has the first number";
    EXPECT_THAT(next.ui8("F1Md"), Optional(1));
    EXPECT_EQ(next.writeUi8("F0Md", 0), SmcResult::success);
    EXPECT_THAT(rig.hardware.takeWrites(), IsEmpty());
    EXPECT_EQ(next.writeUi8("F1Md", 0), SmcResult::success);
    EXPECT_EQ(attribute("pwm1_enable").text, "5\n");
    EXPECT_EQ(rig.journal(), "");
}

TEST_F(FanAfterACrash, IsUntouchedWhenTheProcessDiedBetweenJournalAndFirstWrite) {
    {
        SmcClient smc = rig.connect();
        rig.hardware.killAtWrite(0);
        EXPECT_THROW(static_cast<void>(smc.writeUi8("F0Md", 1)), ProcessKilled);
    }
    EXPECT_THAT(rig.hardware.takeWrites(), IsEmpty());
    EXPECT_THAT(rig.journal(), HasSubstr("enable=5")) << "the journal is written first";
    SmcClient next = rig.connect();
    EXPECT_THAT(next.ui8("F0Md"), Optional(0));
    EXPECT_EQ(next.writeUi8("F0Md", 0), SmcResult::success);
    EXPECT_EQ(rig.journal(), "");
}

TEST_F(FanAfterACrash, IsGivenBackWhereverTheProcessDied) {
    for (const int write : {1, 2, 3}) {
        {
            SmcClient smc = rig.connect();
            rig.hardware.killAtWrite(write);
            EXPECT_THROW(
                {
                    static_cast<void>(smc.writeUi8("F0Md", 1));
                    static_cast<void>(smc.writeFlt("F0Tg", 2500.0F));
                    static_cast<void>(smc.writeUi8("F0Md", 0));
                },
                ProcessKilled);
        }
        SmcClient next = rig.connect();
        EXPECT_EQ(next.writeUi8("F0Md", 0), SmcResult::success) << write;
        EXPECT_EQ(attribute("pwm1_enable").text, "5\n") << write;
        EXPECT_EQ(rig.journal(), "") << write;
        attribute("pwm1").text = "90\n";
    }
}

TEST_F(FanAfterACrash, KeepsItsEntryWhileItsDriverIsNotLoaded) {
    crashWhileForced(FanOwner::helper);
    const std::string journal = rig.journal();
    rig.hardware.unplug(chip);
    rig.hardware.plug(machines::pwmChip("aquaero", 2, 50, 600));
    SmcClient other = rig.connect();
    EXPECT_EQ(other.writeUi8("F0Md", 1), SmcResult::success);
    EXPECT_EQ(other.writeUi8("F0Md", 0), SmcResult::success);
    EXPECT_EQ(rig.journal(), journal);
}

TEST_F(FanAfterACrash, IsNotTakenWhenTheJournalCannotBeWritten) {
    rig.folder.write("file", "");
    rig.journalPath = rig.folder.path("file/fans");
    SmcClient smc = rig.connect();
    for (int tick = 0; tick < 3; ++tick) {
        EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::notWritable);
    }
    EXPECT_THAT(rig.hardware.takeWrites(), IsEmpty());
    EXPECT_THAT(smc.ui8("F0Md"), Optional(0));
    EXPECT_THAT(rig.log.lines(), ElementsAre("Corvane daemon: fan 0 (nct6779 fan1): not taken over: the fan "
                                             "journal cannot be written now"));
}

TEST_F(FanAfterACrash, IsNotCalledReleasedUntilTheJournalSaysSo) {
    SmcClient smc = rig.connect();
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    std::filesystem::create_directory(rig.folder.path("fans.new"));
    EXPECT_EQ(smc.writeUi8("F0Md", 0), SmcResult::notWritable);
    EXPECT_EQ(attribute("pwm1_enable").text, "5\n");
    EXPECT_THAT(smc.ui8("F0Md"), Optional(1));
    std::filesystem::remove(rig.folder.path("fans.new"));
    rig.time.advance(std::chrono::seconds(2));
    EXPECT_THAT(smc.ui8("F0Md"), Optional(0));
    EXPECT_EQ(rig.journal(), "");
}

TEST_F(FanAfterACrash, IsRestoredFromTheGoodLinesOfADamagedJournal) {
    crashWhileForced(FanOwner::helper);
    rig.folder.write("fans", "fan\thelper\tdevi\n" + rig.journal() + "\x01\x02");
    SmcClient next = rig.connect();
    EXPECT_THAT(rig.log.lines(), Contains("Corvane daemon: fan journal: 2 damaged lines skipped"));
    EXPECT_EQ(next.writeUi8("F0Md", 0), SmcResult::success);
    EXPECT_EQ(attribute("pwm1_enable").text, "5\n");
    EXPECT_EQ(rig.journal(), "");
}

TEST_F(FanAfterACrash, IsNeverCalledReleasedWhileItsEntryMakesNoSense) {
    for (const char* original : {"enable=300", "enable=1", "enable=-1", "pwm=90"}) {
        HwmonRig other({chip});
        other.folder.write("fans", "fan\thelper\tdevices/platform/nct6779\tnct6779\t1\t" +
                                       std::string(original) + "\tend\n");
        SmcClient smc = other.connect();
        EXPECT_THAT(other.log.lines(),
                    ElementsAre("Corvane daemon: fan 0 (nct6779 fan1): WARNING: was not given back, "
                                "and its journal entry cannot be used"))
            << original;
        EXPECT_THAT(smc.ui8("F0Md"), Optional(1)) << original;
        EXPECT_EQ(smc.writeUi8("F0Md", 0), SmcResult::notWritable) << original;
        EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::notWritable) << "there is no known way back";
        EXPECT_THAT(other.hardware.takeWrites(), IsEmpty()) << original;
    }
}

TEST_F(FanAfterACrash, IsGivenBackByAnEntryThatTellsItsModeOnly) {
    rig.folder.write("fans", "fan\thelper\tdevices/platform/nct6779\tnct6779\t1\tpwm=70000\tenable=5\tend\n");
    attribute("pwm1_enable").text = "1\n";
    SmcClient smc = rig.connect();
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1_enable=1", "pwm1=255"))
        << "what the firmware held is not known";
    EXPECT_EQ(smc.writeUi8("F0Md", 0), SmcResult::success);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1_enable=5"));
    EXPECT_EQ(rig.journal(), "");
}

TEST_F(FanAfterACrash, IsGivenBackAtOnceWhenItsEntryIsGone) {
    for (const bool isDriven : {true, false}) {
        SmcClient smc = rig.connect();
        EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);
        rig.hardware.takeWrites();
        std::filesystem::remove(rig.journalPath);
        EXPECT_EQ(isDriven ? smc.writeFlt("F0Tg", 2000.0F) : smc.writeUi8("F0Md", 1), SmcResult::notWritable);
        EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1_enable=5"));
        EXPECT_THAT(smc.ui8("F0Md"), Optional(0));
    }
}

TEST_F(FanAfterACrash, IsTakenBackFromADiagnosticCommandThatForcedIt) {
    SmcClient helper = rig.connect();
    EXPECT_EQ(helper.writeUi8("F0Md", 1), SmcResult::success);
    {
        SmcClient diagnostics = rig.connect(FanOwner::diagnostics);
        EXPECT_EQ(diagnostics.writeUi8("F0Md", 0), SmcResult::success);
        EXPECT_EQ(diagnostics.writeUi8("F0Md", 1), SmcResult::success);
        EXPECT_THAT(rig.journal(), HasSubstr("diagnostics"));
    }
    rig.hardware.takeWrites();
    EXPECT_EQ(helper.writeUi8("F0Md", 1), SmcResult::success);
    EXPECT_EQ(helper.writeFlt("F0Tg", 2500.0F), SmcResult::success);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1=213"));
    EXPECT_THAT(rig.journal(), HasSubstr("fan\thelper"));
    EXPECT_EQ(helper.writeUi8("F0Md", 0), SmcResult::success);
    EXPECT_EQ(attribute("pwm1_enable").text, "5\n");
}

TEST_F(FanAfterACrash, IsGivenBackOnceItsDriverIsLoadedAgain) {
    crashWhileForced(FanOwner::helper);
    rig.hardware.unplug(chip);
    rig.hardware.plug(machines::pwmChip("aquaero", 2, 50, 600));
    SmcClient smc = rig.connect();
    const std::vector<std::string> keys = smc.keys();
    const std::string name = "nct6779 fan1 of devices/platform/nct6779";
    EXPECT_THAT(rig.log.lines(), ElementsAre("Corvane daemon: WARNING: " + name +
                                             " was not given back; waiting for its driver"));
    rig.time.advance(std::chrono::seconds(10));
    EXPECT_THAT(rig.hardware.takeWrites(), IsEmpty());

    chip.number = 7;
    chip.attributes[2].text = "1\n";
    rig.hardware.plug(chip);
    rig.time.advance(std::chrono::seconds(2));
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1_enable=5"));
    EXPECT_EQ(rig.journal(), "");
    EXPECT_EQ(rig.log.lines().back(), "Corvane daemon: " + name + " given back");
    EXPECT_EQ(smc.keys(), keys) << "it is not offered";
    rig.time.advance(std::chrono::seconds(10));
    EXPECT_EQ(rig.log.lines().size(), 2U) << "nothing is left to wait for";
}

/// Whoever finds no controller looks for one with every call.
TEST_F(FanAfterACrash, IsNamedOnceWhileThereIsNoControllerAtAll) {
    crashWhileForced(FanOwner::helper);
    rig.hardware.unplug(chip);
    SmcClient smc = rig.connectUnopened();
    EXPECT_NE(smc.open(), 0);
    EXPECT_NE(smc.open(), 0);
    EXPECT_EQ(rig.log.count("was not given back; waiting for its driver"), 1U);
}

TEST_F(FanAfterACrash, IsOfUnknownModeToAProcessThatMayNotReadTheJournal) {
    crashWhileForced(FanOwner::helper);
    std::filesystem::remove(rig.journalPath);
    std::filesystem::create_symlink("nowhere", rig.journalPath);
    SmcClient smc = rig.connect(FanOwner::diagnostics);
    EXPECT_EQ(smc.ui8("F0Md"), std::nullopt);
    attribute("pwm1_enable").text = "5\n";
    EXPECT_THAT(smc.ui8("F0Md"), Optional(0));
}

TEST_F(FanAfterACrash, OfTheHelperIsOnlyGivenBackByDiagnostics) {
    crashWhileForced(FanOwner::helper);
    SmcClient diagnostics = rig.connect(FanOwner::diagnostics);
    EXPECT_EQ(diagnostics.writeUi8("F0Md", 1), SmcResult::notWritable);
    EXPECT_EQ(diagnostics.writeFlt("F0Tg", 2500.0F), SmcResult::notWritable);
    EXPECT_THAT(rig.hardware.takeWrites(), IsEmpty());
    EXPECT_EQ(diagnostics.writeUi8("F0Md", 0), SmcResult::success);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1_enable=5"));
    EXPECT_THAT(diagnostics.ui8("F0Md"), Optional(0));
}

TEST_F(FanAfterACrash, IsRefusedToDiagnosticsThatStartedBeforeTheHelperTookIt) {
    SmcClient diagnostics = rig.connect(FanOwner::diagnostics);
    SmcClient helper = rig.connect();
    EXPECT_EQ(helper.writeUi8("F0Md", 1), SmcResult::success);
    rig.hardware.takeWrites();
    EXPECT_EQ(diagnostics.writeUi8("F0Md", 1), SmcResult::notWritable);
    EXPECT_EQ(diagnostics.writeFlt("F0Tg", 2500.0F), SmcResult::notWritable);
    EXPECT_THAT(rig.hardware.takeWrites(), IsEmpty());
    EXPECT_EQ(diagnostics.writeUi8("F0Md", 0), SmcResult::success);
    EXPECT_EQ(attribute("pwm1_enable").text, "5\n");
    EXPECT_EQ(helper.writeUi8("F0Md", 1), SmcResult::notWritable) << "the helper does not fight for it";
    EXPECT_EQ(helper.writeUi8("F0Md", 0), SmcResult::success);
}

TEST_F(FanAfterACrash, IsDrivenOnByTheNextDiagnosticCommand) {
    crashWhileForced(FanOwner::diagnostics);
    SmcClient next = rig.connect(FanOwner::diagnostics);
    EXPECT_EQ(next.writeFlt("F0Tg", 2500.0F), SmcResult::success);
    EXPECT_THAT(rig.hardware.takeWrites(), ElementsAre("pwm1=213"));
    EXPECT_EQ(next.writeUi8("F0Md", 0), SmcResult::success);
    EXPECT_EQ(attribute("pwm1_enable").text, "5\n");
}

TEST_F(FanAfterACrash, PassesFromDiagnosticsToTheHelperWithItsOriginals) {
    SmcClient diagnostics = rig.connect(FanOwner::diagnostics);
    EXPECT_EQ(diagnostics.writeUi8("F0Md", 1), SmcResult::success);
    SmcClient helper = rig.connect();
    EXPECT_EQ(helper.writeUi8("F0Md", 1), SmcResult::success);
    EXPECT_THAT(rig.journal(),
                HasSubstr("fan\thelper\tdevices/platform/nct6779\tnct6779\t1\tpwm=90\tenable=5"));
    rig.hardware.takeWrites();
    EXPECT_EQ(diagnostics.writeFlt("F0Tg", 2500.0F), SmcResult::notWritable);
    EXPECT_EQ(diagnostics.writeUi8("F0Md", 1), SmcResult::notWritable);
    EXPECT_THAT(rig.hardware.takeWrites(), IsEmpty());
    EXPECT_EQ(helper.writeFlt("F0Tg", 2500.0F), SmcResult::success);
}

TEST_F(FanAfterACrash, DoesNotLoseTheEntriesOfOtherFans) {
    rig.hardware.plug([] {
        machines::ChipSpec second = machines::pwmChip("nct6798", 2, 60, 700);
        second.number = 1;
        return second;
    }());
    SmcClient diagnostics = rig.connect(FanOwner::diagnostics);
    SmcClient helper = rig.connect();
    EXPECT_EQ(helper.writeUi8("F0Md", 1), SmcResult::success);
    EXPECT_EQ(diagnostics.writeUi8("F1Md", 1), SmcResult::success);
    EXPECT_EQ(helper.writeUi8("F0Md", 0), SmcResult::success);
    EXPECT_EQ(rig.journal(),
              "fan\tdiagnostics\tdevices/platform/nct6798\tnct6798\t1\tpwm=60\tenable=2\tend\n");
}

TEST_F(FanAfterACrash, IsNotCalledReleasedWhenItCanOnlyBeWatchedNow) {
    crashWhileForced(FanOwner::helper);
    attribute("pwm1_enable").mode = 0444;
    SmcClient next = rig.connect();
    EXPECT_THAT(next.ui8("F0Md"), Optional(1));
    EXPECT_EQ(next.writeUi8("F0Md", 0), SmcResult::notWritable);
}

}  // namespace
}  // namespace corvane
