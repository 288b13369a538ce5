#include <cerrno>

#include <gmock/gmock.h>

#include "tests/platform/linux/hwmon/HwmonRig.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::Optional;

TEST(HwmonKeys, FindNoControllerWithoutAnyChip) {
    HwmonRig rig({});
    SmcClient smc = rig.connectUnopened();
    EXPECT_EQ(smc.open(), SmcConnection::noService);
}

TEST(HwmonKeys, AppearOnceAChipDoes) {
    HwmonRig rig({});
    SmcClient smc = rig.connectUnopened();
    EXPECT_EQ(smc.open(), SmcConnection::noService);
    rig.hardware.plug(machines::pwmChip("nct6779", 5, 90, 800));
    EXPECT_EQ(smc.open(), 0);
    EXPECT_THAT(smc.ui8("FNum"), Optional(1));
}

TEST(HwmonKeys, AreListedInAscendingOrderWithTheirNumber) {
    HwmonRig rig(machines::thinkPadT420());
    SmcClient smc = rig.connect();
    EXPECT_THAT(smc.keys(), ElementsAre("#KEY", "F0Ac", "F0Md", "F0Mn", "F0Mx", "F0Tg", "FNum", "Ftst",
                                        "Tp00", "Tp01", "Tp02"));
}

TEST(HwmonKeys, CarryTheAttributesOfARealController) {
    HwmonRig rig(machines::thinkPadT420());
    SmcClient smc = rig.connect();
    EXPECT_THAT(smc.attributes("F0Ac"), Optional(0x84));
    EXPECT_THAT(smc.attributes("F0Tg"), Optional(0xD4));
    EXPECT_THAT(smc.attributes("F0Md"), Optional(0xD0));
    EXPECT_THAT(smc.attributes("FNum"), Optional(0x80));
}

TEST(HwmonKeys, RememberTheForceFlag) {
    HwmonRig rig(machines::thinkPadT420());
    SmcClient smc = rig.connect();
    EXPECT_THAT(smc.ui8("Ftst"), Optional(0));
    EXPECT_EQ(smc.writeUi8("Ftst", 1), SmcResult::success);
    EXPECT_THAT(smc.ui8("Ftst"), Optional(1));
    EXPECT_TRUE(rig.hardware.takeWrites().empty());
}

TEST(HwmonKeys, ShowAThinkPadsFanAndProcessor) {
    HwmonRig rig(machines::thinkPadT420());
    SmcClient smc = rig.connect();
    EXPECT_THAT(smc.flt("F0Ac"), Optional(3855.0F));
    EXPECT_THAT(smc.flt("F0Mn"), Optional(0.0F));
    EXPECT_THAT(smc.flt("F0Mx"), Optional(3855.0F)) << "a fan found above the nominal maximum sets it";
    EXPECT_THAT(smc.ui8("F0Md"), Optional(0));
    EXPECT_THAT(smc.flt("Tp00"), Optional(69.0F));
    EXPECT_THAT(smc.flt("Tp02"), Optional(67.0F));
}

TEST(HwmonKeys, LeaveOutGraphicsFansAndSensorsThatDoNotBearOnSafety) {
    HwmonRig rig(machines::asusX570());
    SmcClient smc = rig.connect();
    EXPECT_THAT(smc.keys(), ElementsAre("#KEY", "F0Ac", "F0Md", "F0Mn", "F0Mx", "F0Tg", "FNum", "Ftst",
                                        "Tg00", "Tg01", "Tg02", "Tp00", "Tp01"));
    EXPECT_THAT(smc.flt("F0Ac"), Optional(1125.0F)) << "the board's fan, not the card's 791";
    EXPECT_THAT(smc.flt("Tg01"), Optional(54.0F));
    EXPECT_THAT(smc.flt("Tp00"), Optional(58.1F));
}

TEST(HwmonKeys, OfferNoTemperatureOfAnAppleSiliconMac) {
    HwmonRig rig(machines::macBookPro16());
    SmcClient smc = rig.connect();
    EXPECT_THAT(smc.ui8("FNum"), Optional(2));
    for (const std::string& key : smc.keys()) {
        EXPECT_NE(key.front(), 'T') << key;
    }
    EXPECT_THAT(smc.flt("F0Ac"), Optional(0.0F));
    EXPECT_THAT(smc.flt("F1Mn"), Optional(1499.0F));
    EXPECT_THAT(smc.flt("F1Mx"), Optional(5776.0F));
}

TEST(HwmonKeys, TellAnIntelMacsSensorsByTheirLabels) {
    HwmonRig rig(machines::intelMac());
    SmcClient smc = rig.connect();
    EXPECT_THAT(smc.flt("Tp00"), Optional(61.75F));
    EXPECT_THAT(smc.flt("Tp01"), Optional(-127.0F)) << "passed on: whoever asks checks the range";
    EXPECT_THAT(smc.flt("Tg00"), Optional(55.5F));
    EXPECT_EQ(smc.readResult("Tp02"), SmcResult::keyNotFound);
    EXPECT_THAT(smc.flt("F0Mx"), Optional(6200.0F));
    EXPECT_THAT(smc.flt("F0Tg"), Optional(2000.0F));
}

TEST(HwmonKeys, LeaveABoardChipsOddSensorsOut) {
    HwmonRig rig(machines::nct6775Board());
    SmcClient smc = rig.connect();
    EXPECT_THAT(smc.flt("Tp00"), Optional(45.0F));
    EXPECT_EQ(smc.readResult("Tp01"), SmcResult::keyNotFound) << "AUXTIN is no processor";
    EXPECT_THAT(smc.ui8("FNum"), Optional(5));
}

TEST(HwmonKeys, DoNotDependOnHwmonNumbers) {
    machines::Machine machine = machines::nct6775Board();
    machine.push_back(machines::pwmChip("it8792", 2, 90, 1234));
    machine[2].number = 5;
    HwmonRig first(machine);
    const std::vector<std::string> keys = first.connect().keys();
    machine[0].number = 0;
    machine[1].number = 7;
    machine[2].number = 4;
    HwmonRig second(machine);
    SmcClient smc = second.connect();
    EXPECT_EQ(smc.keys(), keys);
    EXPECT_THAT(smc.flt("F0Ac"), Optional(1234.0F)) << "it8792 sorts before nct6775";
    EXPECT_THAT(smc.flt("F1Ac"), Optional(710.0F));
}

TEST(HwmonKeys, OrderChannelsAsNumbers) {
    machines::ChipSpec chip{"devices/platform/nct6687.2592", "nct6687", 0, {}};
    for (int fan = 1; fan <= 8; ++fan) {
        chip.attributes.push_back({"fan" + std::to_string(fan) + "_input", std::to_string(fan * 100) + "\n"});
    }
    chip.attributes.push_back({"fan10_input", "1000\n"});
    HwmonRig rig({chip});
    SmcClient smc = rig.connect();
    EXPECT_THAT(smc.flt("F1Ac"), Optional(200.0F));
    EXPECT_THAT(smc.flt("F8Ac"), Optional(1000.0F));
}

TEST(HwmonKeys, OfferAtMostTenFansAndRatherThoseThatCanBeDriven) {
    machines::ChipSpec watched{"devices/platform/a", "asusec", 0, {}};
    for (int fan = 1; fan <= 12; ++fan) {
        watched.attributes.push_back({"fan" + std::to_string(fan) + "_input", "500\n"});
    }
    watched.number = 1;
    HwmonRig rig({watched, machines::pwmChip("nct6779", 5, 90, 801)});
    SmcClient smc = rig.connect();
    EXPECT_THAT(smc.ui8("FNum"), Optional(10));
    EXPECT_THAT(smc.flt("F9Ac"), Optional(801.0F));
    EXPECT_EQ(smc.writeUi8("F9Md", 1), SmcResult::success);
}

TEST(HwmonKeys, OfferFansOfSeveralKindsOnlyForWatching) {
    machines::ChipSpec dell = machines::pwmChip("dell_smm", 0, 128, 2400);
    dell.attributes.back().mode = 0200;
    machines::ChipSpec sealed = machines::pwmChip("nct6798", 5, 128, 900);
    sealed.attributes[1].mode = 0444;
    machines::Machine macWithoutGate = machines::macMini();
    macWithoutGate[0].attributes[4].mode = 0444;
    for (const machines::Machine& machine :
         {machines::Machine{dell}, machines::Machine{sealed}, macWithoutGate, machines::gigabyteZ170()}) {
        HwmonRig rig(machine);
        SmcClient smc = rig.connect();
        EXPECT_TRUE(smc.flt("F0Ac").has_value()) << machine[0].name;
        EXPECT_THAT(smc.ui8("F0Md"), Optional(0)) << machine[0].name;
        EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::notWritable) << machine[0].name;
        EXPECT_EQ(smc.writeFlt("F0Tg", 3000.0F), SmcResult::notWritable) << machine[0].name;
        EXPECT_TRUE(rig.hardware.takeWrites().empty()) << machine[0].name;
        EXPECT_EQ(rig.journal(), "") << machine[0].name;
    }
}

TEST(HwmonKeys, SayWhenLimitsAreUnknown) {
    HwmonRig rig(machines::gigabyteZ170());
    SmcClient smc = rig.connect();
    EXPECT_EQ(smc.readResult("F0Mn"), SmcResult::notReadable);
    EXPECT_EQ(smc.readResult("F0Mx"), SmcResult::notReadable);
    EXPECT_THAT(smc.flt("F0Tg"), Optional(0.0F));
}

TEST(HwmonKeys, DoNotDriveChipsThatCannotBeToldApart) {
    machines::ChipSpec twin = machines::pwmChip("nct6779", 5, 90, 900);
    twin.number = 1;
    HwmonRig rig({machines::pwmChip("nct6779", 5, 90, 800), twin});
    SmcClient smc = rig.connect();
    EXPECT_THAT(smc.ui8("FNum"), Optional(2));
    EXPECT_EQ(smc.writeUi8("F0Md", 1), SmcResult::notWritable);
    EXPECT_EQ(smc.writeUi8("F1Md", 1), SmcResult::notWritable);
}

struct Reading {
    const char* text;
    std::optional<float> celsius;
};

TEST(HwmonKeys, NeverMakeAPlausibleTemperatureOfAnOddText) {
    const Reading readings[] = {
        {"58100\n", 58.1F},
        {"0\n", 0.0F},
        {"112000\n", 112.0F},
        {"-128000\n", -128.0F},
        {"216000\n", 216.0F},
        {"4294967000\n", 4294967.0F},
        {"58100", 58.1F},
        {"", std::nullopt},
        {"\n", std::nullopt},
        {"N/A\n", std::nullopt},
        {"58 100\n", std::nullopt},
        {"58.1\n", std::nullopt},
        {"+58100\n", std::nullopt},
        {"58100\n\n", std::nullopt},
        {"0x3000\n", std::nullopt},
        {"58100000000000000000000\n", std::nullopt},
        {"-\n", std::nullopt},
        {"nan\n", std::nullopt},
        {"00000000000000000000000000000058100\n", std::nullopt},
    };
    HwmonRig rig(machines::thinkPadT420());
    SmcClient smc = rig.connect();
    FakeHardware::Attribute& input = rig.hardware.at(machines::thinkPadT420()[2].path("temp1_input"));
    for (const Reading& reading : readings) {
        input.text = reading.text;
        EXPECT_EQ(smc.flt("Tp00"), reading.celsius) << reading.text;
        if (!reading.celsius) {
            EXPECT_EQ(smc.readResult("Tp00"), SmcResult::notReadable) << reading.text;
        }
    }
}

TEST(HwmonKeys, DoNotReadImpossibleSpeeds) {
    HwmonRig rig(machines::macMini());
    SmcClient smc = rig.connect();
    FakeHardware::Attribute& input = rig.hardware.at(machines::macMini()[0].path("fan1_input"));
    for (const char* text : {"4294967000\n", "-1\n", "100001\n"}) {
        input.text = text;
        EXPECT_EQ(smc.readResult("F0Ac"), SmcResult::notReadable) << text;
    }
    input.text = "4512\n";
    EXPECT_THAT(smc.flt("F0Ac"), Optional(4512.0F)) << "slightly above the maximum is as it is";
}

TEST(HwmonKeys, PassAFailedReadOnAndRecover) {
    HwmonRig rig(machines::thinkPadT420());
    SmcClient smc = rig.connect();
    FakeHardware::Attribute& input = rig.hardware.at(machines::thinkPadT420()[2].path("temp1_input"));
    for (const int error : {EIO, EINVAL, ENODATA, EAGAIN}) {
        input.readError = error;
        EXPECT_EQ(smc.readResult("Tp00"), SmcResult::notReadable);
        input.readError = 0;
        EXPECT_THAT(smc.flt("Tp00"), Optional(69.0F));
    }
}

TEST(HwmonKeys, TellOnceOfListedAttributesThatCannotBeOpened) {
    HwmonRig rig(machines::thinkPadT420());
    rig.hardware.at(machines::thinkPadT420()[2].path("temp2_input")).mode = 0200;
    SmcClient smc = rig.connect();
    EXPECT_EQ(smc.readResult("Tp01"), SmcResult::notReadable);
    EXPECT_THAT(rig.log.lines(),
                ElementsAre("Corvane daemon: cannot open 1 of 3 sensors and 0 of 1 fans that are listed"));
}

TEST(HwmonKeys, CostOneReadOfTheAttributeEach) {
    HwmonRig rig(machines::thinkPadT420());
    SmcClient smc = rig.connect();
    FakeHardware::Attribute& sensor = rig.hardware.at(machines::thinkPadT420()[2].path("temp1_input"));
    FakeHardware::Attribute& fan = rig.hardware.at(machines::thinkPadT420()[1].path("fan1_input"));
    sensor.reads = 0;
    fan.reads = 0;
    for (int i = 1; i <= 3; ++i) {
        EXPECT_THAT(smc.flt("Tp00"), Optional(69.0F));
        EXPECT_THAT(smc.flt("F0Ac"), Optional(3855.0F));
        EXPECT_THAT(smc.flt("F0Mx"), Optional(3855.0F));
        EXPECT_EQ(sensor.reads, i);
        EXPECT_EQ(fan.reads, i);
    }
}

TEST(HwmonKeys, FindASensorAgainUnderItsNewNumber) {
    const machines::Machine machine = machines::thinkPadT420();
    HwmonRig rig(machine);
    SmcClient smc = rig.connect();
    machines::ChipSpec coretemp = machine[2];
    rig.hardware.unplug(coretemp);
    EXPECT_EQ(smc.readResult("Tp00"), SmcResult::notReadable);
    EXPECT_EQ(smc.readResult("Tp00"), SmcResult::notReadable) << "looked for, not there";

    coretemp.number = 9;
    coretemp.attributes[0].text = "71000\n";
    rig.hardware.plug(coretemp);
    EXPECT_EQ(smc.readResult("Tp00"), SmcResult::notReadable) << "just looked for";
    rig.time.advance(std::chrono::seconds(3));
    EXPECT_THAT(smc.flt("Tp00"), Optional(71.0F));
    EXPECT_EQ(smc.readResult("Tp01"), SmcResult::notReadable)
        << "this read only noticed that its file is gone";
    EXPECT_THAT(smc.flt("Tp01"), Optional(59.0F));
}

TEST(HwmonKeys, NeverTakeAnotherChipForOneThatIsGone) {
    const machines::Machine machine = machines::thinkPadT420();
    HwmonRig rig(machine);
    SmcClient smc = rig.connect();
    rig.hardware.unplug(machine[2]);
    machines::ChipSpec other = machine[2];
    other.device = "devices/platform/intruder.0";
    other.name = "intruder";
    rig.hardware.plug(other);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(smc.readResult("Tp00"), SmcResult::notReadable);
        rig.time.advance(std::chrono::seconds(3));
    }
}

}  // namespace
}  // namespace corvane
