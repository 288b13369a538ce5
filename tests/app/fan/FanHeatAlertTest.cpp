#include "tests/app/fan/ReportedMachine.h"

namespace corvane {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class HeatMachine : public ReportedMachine {
public:
    HeatMachine() { open(); }

    /// As many records as the median sees, so that the smoothed temperature is `celsius` at their end.
    void stayAt(double celsius) { receiveTimes(15, cpuRecord(celsius)); }
    [[nodiscard]] std::string onlyBody() const {
        return center.posted().size() == 1 ? center.posted()[0].body : "not one notification";
    }
};

TEST(FanHeatAlert, IsGivenInEnglish) {
    HeatMachine machine;
    machine.receive(cpuRecord(97));
    ASSERT_THAT(machine.center.posted(), SizeIs(1));
    EXPECT_EQ(machine.center.posted()[0].title, "🔥 CPU running very hot");
    EXPECT_EQ(machine.center.posted()[0].body, "The CPU is at 97 °C.");
}

TEST(FanHeatAlert, IsGivenInGerman) {
    HeatMachine machine;
    machine.locale.prefer({"de-AT"});
    machine.receive(cpuRecord(97));
    ASSERT_THAT(machine.center.posted(), SizeIs(1));
    EXPECT_EQ(machine.center.posted()[0].title, "🔥 CPU sehr heiß");
    EXPECT_EQ(machine.center.posted()[0].body, "Die CPU liegt bei 97 °C.");
}

TEST(FanHeatAlert, RoundsTheTemperatureHalvesToEven) {
    for (const auto& [celsius, body] : {std::pair{95.5, "The CPU is at 96 °C."},
                                        {96.5, "The CPU is at 96 °C."},
                                        {96.51, "The CPU is at 97 °C."},
                                        {95.49, "The CPU is at 95 °C."},
                                        {108.0, "The CPU is at 108 °C."}}) {
        HeatMachine machine;
        machine.receive(cpuRecord(celsius));
        EXPECT_EQ(machine.onlyBody(), body);
    }
}

TEST(FanHeatAlert, IsGivenAt95DegreesAndNotBelow) {
    HeatMachine machine;
    machine.receive(cpuRecord(94.99));
    EXPECT_THAT(machine.center.posted(), IsEmpty());
    HeatMachine hotMachine;
    hotMachine.receive(cpuRecord(95));
    EXPECT_THAT(hotMachine.center.posted(), SizeIs(1));
}

TEST(FanHeatAlert, GoesByTheSmoothedTemperature) {
    HeatMachine machine;
    machine.stayAt(60);
    machine.receiveTimes(7, cpuRecord(120));
    EXPECT_THAT(machine.center.posted(), IsEmpty());
    machine.receive(cpuRecord(96));
    EXPECT_EQ(machine.onlyBody(), "The CPU is at 96 °C.");
}

TEST(FanHeatAlert, IsNotGivenForTheGpu) {
    HeatMachine machine;
    machine.receiveTimes(20, recordOf({{"gpuTemp", 110.0}}));
    EXPECT_THAT(machine.center.posted(), IsEmpty());
}

TEST(FanHeatAlert, IsNotGivenWithoutAnyReading) {
    HeatMachine machine;
    machine.receiveTimes(20, StatusRecord());
    EXPECT_THAT(machine.center.posted(), IsEmpty());
}

TEST(FanHeatAlert, IsGivenOncePerEpisode) {
    HeatMachine machine;
    machine.stayAt(95);
    machine.stayAt(108);
    EXPECT_THAT(machine.center.posted(), SizeIs(1));
}

TEST(FanHeatAlert, IsGivenAgainOnlyAfterItWasBelow88Degrees) {
    HeatMachine machine;
    machine.stayAt(95);
    machine.stayAt(90);
    machine.stayAt(95);
    EXPECT_THAT(machine.center.posted(), SizeIs(1));
    machine.stayAt(88);
    machine.stayAt(95);
    EXPECT_THAT(machine.center.posted(), SizeIs(1));
    machine.stayAt(87.99);
    EXPECT_THAT(machine.center.posted(), SizeIs(1));
    machine.stayAt(95);
    EXPECT_THAT(machine.center.posted(), SizeIs(2));
}

TEST(FanHeatAlert, GoesByTheLastSmoothedValueWhileReadingsAreMissing) {
    HeatMachine machine;
    machine.stayAt(95);
    machine.receiveTimes(30, StatusRecord());
    machine.stayAt(95);
    EXPECT_THAT(machine.center.posted(), SizeIs(1));
}

TEST(FanHeatAlert, IsNotGivenWhileAlertsAreOff) {
    HeatMachine machine;
    machine.defaults.set("heatAlerts", false);
    machine.stayAt(100);
    EXPECT_THAT(machine.center.posted(), IsEmpty());
}

TEST(FanHeatAlert, IsGivenWhenAlertsAreSwitchedOnInTheHeat) {
    HeatMachine machine;
    machine.defaults.set("heatAlerts", false);
    machine.stayAt(100);
    machine.defaults.set("heatAlerts", true);
    machine.receive(cpuRecord(100));
    EXPECT_THAT(machine.center.posted(), SizeIs(1));
}

TEST(FanHeatAlert, DoesNotForgetAnEpisodeWhileAlertsAreOff) {
    HeatMachine machine;
    machine.stayAt(95);
    machine.defaults.set("heatAlerts", false);
    machine.stayAt(60);
    machine.stayAt(95);
    machine.defaults.set("heatAlerts", true);
    machine.stayAt(95);
    EXPECT_THAT(machine.center.posted(), SizeIs(1));
    machine.stayAt(60);
    machine.stayAt(95);
    EXPECT_THAT(machine.center.posted(), SizeIs(2));
}

TEST(FanHeatAlert, IsGivenWhenTheSettingIsNoBoolean) {
    const std::vector<DefaultsValue> values = {std::string("false"), std::string(""), std::int64_t{0}, 0.0,
                                               std::vector<std::byte>()};
    for (const DefaultsValue& value : values) {
        HeatMachine machine;
        machine.defaults.set("heatAlerts", value);
        machine.receive(cpuRecord(95));
        EXPECT_THAT(machine.center.posted(), SizeIs(1));
    }
}

TEST(FanHeatAlert, IsGivenForARealChipThatOverheats) {
    FanMachine machine;
    machine.openAt(80);
    machine.helper.mac.holdSensorsAt(99);
    machine.advance(7s);
    EXPECT_THAT(machine.postedTitles(), IsEmpty());
    machine.advance(1s);
    EXPECT_THAT(machine.postedTitles(), testing::ElementsAre("🔥 CPU running very hot"));
}

}  // namespace
}  // namespace corvane
