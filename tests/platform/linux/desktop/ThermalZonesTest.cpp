#include "platform/linux/desktop/ThermalZones.h"
#include "tests/platform/linux/desktop/ThermalTree.h"

namespace corvane {
namespace {

using enum ThermalState;

class ThermalZonesTest : public ThermalTree {
protected:
    ThermalState at(int temperature) {
        heat(0, temperature);
        return zones.read();
    }

    ThermalZones zones{sys.path().string()};
};

TEST_F(ThermalZonesTest, AreNominalWhereThereAreNone) {
    EXPECT_EQ(zones.read(), nominal);
}

TEST_F(ThermalZonesTest, AreNominalWithoutTripPoints) {
    zone(0, 99'000, {});
    EXPECT_EQ(zones.read(), nominal);
}

TEST_F(ThermalZonesTest, AreFairFromTheLowestPassiveTripOn) {
    zone(0, 20'000, {{"passive", 90'000}, {"passive", 80'000}, {"active", 50'000}});
    EXPECT_EQ(at(79'999), nominal);
    EXPECT_EQ(at(80'000), fair);
    EXPECT_EQ(at(150'000), fair);
}

TEST_F(ThermalZonesTest, AreSeriousFromAHotTripOn) {
    zone(0, 20'000, {{"critical", 110'000}, {"hot", 100'000}, {"passive", 80'000}});
    EXPECT_EQ(at(99'999), fair) << "midway would be 95";
    EXPECT_EQ(at(100'000), serious);
}

TEST_F(ThermalZonesTest, AreSeriousMidwayFromPassiveToCriticalWithoutAHotTrip) {
    zone(0, 20'000, {{"passive", 80'000}, {"critical", 110'000}});
    EXPECT_EQ(at(94'999), fair);
    EXPECT_EQ(at(95'000), serious);
}

TEST_F(ThermalZonesTest, AreCriticalShortOfTheCriticalTrip) {
    zone(0, 20'000, {{"passive", 80'000}, {"critical", 110'000}});
    EXPECT_EQ(at(104'999), serious);
    EXPECT_EQ(at(105'000), critical);
    EXPECT_EQ(at(125'000), critical);
}

TEST_F(ThermalZonesTest, TakeTheHigherStateWhereTripsLieClose) {
    zone(0, 20'000, {{"passive", 95'000}, {"critical", 98'000}});
    EXPECT_EQ(at(93'000), critical);
}

TEST_F(ThermalZonesTest, AreCriticalAtOnceWithOnlyACriticalTrip) {
    zone(0, 20'000, {{"critical", 103'000}});
    EXPECT_EQ(at(97'999), nominal);
    EXPECT_EQ(at(98'000), critical);
}

TEST_F(ThermalZonesTest, StayUntilItIsThreeDegreesCooler) {
    zone(0, 20'000, {{"passive", 80'000}, {"critical", 110'000}});
    EXPECT_EQ(at(105'000), critical);
    EXPECT_EQ(at(102'000), critical);
    EXPECT_EQ(at(101'999), serious);
    EXPECT_EQ(at(92'000), serious);
    EXPECT_EQ(at(94'999), serious);
    EXPECT_EQ(at(91'999), fair);
    EXPECT_EQ(at(94'999), fair) << "from below the trip counts";
    EXPECT_EQ(at(77'000), fair);
    EXPECT_EQ(at(76'999), nominal);
    EXPECT_EQ(at(79'999), nominal);
}

TEST_F(ThermalZonesTest, FallThroughAllStatesAtOnce) {
    zone(0, 20'000, {{"passive", 80'000}, {"critical", 110'000}});
    EXPECT_EQ(at(110'000), critical);
    EXPECT_EQ(at(40'000), nominal);
}

TEST_F(ThermalZonesTest, AreAsHotAsTheHottest) {
    zone(0, 40'000, {{"passive", 80'000}, {"critical", 110'000}});
    zone(1, 96'000, {{"passive", 80'000}, {"critical", 110'000}});
    zone(2, 85'000, {{"passive", 80'000}, {"critical", 110'000}});
    EXPECT_EQ(zones.read(), serious);
    heat(0, 106'000);
    EXPECT_EQ(zones.read(), critical);
}

TEST_F(ThermalZonesTest, HoldOnlyTheZoneThatWasHot) {
    zone(0, 106'000, {{"critical", 110'000}});
    zone(1, 103'000, {{"critical", 110'000}});
    EXPECT_EQ(zones.read(), critical);
    heat(0, 60'000);
    EXPECT_EQ(zones.read(), nominal) << "the other one never got there";
}

TEST_F(ThermalZonesTest, IgnoreReadingsThatCannotBe) {
    zone(0, 20'000, {{"passive", 80'000}, {"critical", 110'000}});
    zone(1, 20'000, {});
    for (const int temperature : {-44'000, -273'250, 0, 200'000, 2'147'483'647}) {
        EXPECT_EQ(at(temperature), nominal) << temperature;
    }
    for (const char* temperature : {"", "hot", "99999 99999", "999999999999999999999"}) {
        write("thermal_zone0/temp", temperature);
        EXPECT_EQ(zones.read(), nominal) << temperature;
    }
    remove("thermal_zone0/temp");
    EXPECT_EQ(zones.read(), nominal);
    heat(1, -44'000);
    EXPECT_EQ(at(105'000), critical) << "the others count";
}

TEST_F(ThermalZonesTest, IgnoreTripPointsThatCannotBe) {
    zone(0, 60'000,
         {{"passive", 0},
          {"passive", -274'000},
          {"hot", 2'147'483'647},
          {"critical", 0},
          {"critical", -1},
          {"hot", 200'000},
          {"no such kind", 50'000}});
    EXPECT_EQ(zones.read(), nominal);
    write("thermal_zone0/trip_point_7_type", "passive");
    write("thermal_zone0/trip_point_7_temp", "50000");
    EXPECT_EQ(zones.read(), fair) << "what follows counts";
}

TEST_F(ThermalZonesTest, IgnoreATripPointBelowEverydayTemperatures) {
    // A board's zone that reads the same for ever.
    zone(0, 16'800, {{"critical", 20'800}});
    EXPECT_EQ(zones.read(), nominal);
    zone(1, 45'000, {{"passive", 39'999}});
    EXPECT_EQ(zones.read(), nominal);
    zone(1, 45'000, {{"passive", 40'000}});
    EXPECT_EQ(zones.read(), fair);
}

TEST_F(ThermalZonesTest, PassOverATripPointWithoutATemperature) {
    zone(0, 85'000, {{"critical", 110'000}, {"passive", 80'000}});
    write("thermal_zone0/trip_point_0_temp", "none");
    EXPECT_EQ(zones.read(), fair);
}

TEST_F(ThermalZonesTest, AreFairWhileTheProcessorIsSlowed) {
    for (const char* type :
         {"Processor", "cpufreq-cpu0", "thermal-cpufreq-0", "cpuidle-cpu3", "intel_powerclamp"}) {
        coolingDevice(0, type, "1");
        EXPECT_EQ(zones.read(), fair) << type;
        coolingDevice(0, type, "0");
        EXPECT_EQ(zones.read(), nominal) << type;
        coolingDevice(0, type, "-1");
        EXPECT_EQ(zones.read(), nominal) << type;
    }
}

TEST_F(ThermalZonesTest, LookAtEveryCoolingDevice) {
    coolingDevice(0, "Processor", "0");
    coolingDevice(1, "Processor", "garbage");
    write("cooling_device2/type", "Processor");
    coolingDevice(10, "Processor", "3");
    EXPECT_EQ(zones.read(), fair);
}

TEST_F(ThermalZonesTest, AreNotHotBecauseAFanTurns) {
    coolingDevice(0, "Fan", "1");
    coolingDevice(1, "TFN1", "50");
    coolingDevice(2, "LCD", "3");
    coolingDevice(3, "TCC Offset", "1");
    EXPECT_EQ(zones.read(), nominal);
}

TEST_F(ThermalZonesTest, AreHotterThanFairWhileTheProcessorIsSlowedIfAZoneIs) {
    coolingDevice(0, "Processor", "1");
    zone(0, 95'000, {{"passive", 80'000}, {"critical", 110'000}});
    EXPECT_EQ(zones.read(), serious);
}

TEST_F(ThermalZonesTest, ReadABoundedNumberOfEverything) {
    Trips many(16, {"active", 50'000});
    many.emplace_back("passive", 50'000);
    zone(0, 60'000, many);
    EXPECT_EQ(zones.read(), nominal) << "the 17th trip";
    for (int i = 0; i < 128; ++i) {
        zone(i, 60'000, {});
    }
    write("thermal_zone999/temp", "60000");
    write("thermal_zone999/trip_point_0_type", "passive");
    write("thermal_zone999/trip_point_0_temp", "50000");
    EXPECT_EQ(zones.read(), nominal) << "the 129th zone";
    remove("thermal_zone0");
    EXPECT_EQ(zones.read(), fair);
    write("thermal_zone999/trip_point_0_type", "passive" + std::string(1 << 20, ' '));
    EXPECT_EQ(zones.read(), nominal) << "no kind of trip is that long";
}

}  // namespace
}  // namespace corvane
