#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/simulated/RecordingLog.h"
#include "platform/simulated/ScenarioSurroundings.h"
#include "platform/simulated/VirtualTime.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

/// What a control file would hold.
struct ControlText {
    std::optional<std::string> text;
    std::int64_t changes = 0;
};

class ControlTextSource final : public ScenarioSource {
public:
    explicit ControlTextSource(const ControlText& control) : control_(control) {}

    std::optional<Stamp> stamp() override {
        return control_.text ? std::optional(Stamp{control_.changes, control_.text->size()}) : std::nullopt;
    }
    std::optional<std::string> read(std::size_t limit) override { return control_.text->substr(0, limit); }

private:
    const ControlText& control_;
};

class ScenarioSurroundingsTest : public testing::Test {
protected:
    void write(std::string text) {
        control.text = std::move(text);
        ++control.changes;
        time.advance(ScenarioReader::interval);
    }

    [[nodiscard]] SerialQueue::Work note(const std::string& what) {
        return [this, what] { notes.push_back(what); };
    }

    VirtualTime time;
    VirtualQueue queue{time};
    RecordingLog log;
    ControlText control;
    std::vector<std::string> notes;
    ScenarioSurroundings surroundings{queue, {std::make_unique<ControlTextSource>(control), "mac.conf", log}};
};

TEST_F(ScenarioSurroundingsTest, AreAsTheFileSaysWhenTheyAreMade) {
    write(
        "battery = 40\npower = battery\nthermal = fair\ndisplays = external\n"
        "application.a = running\ndrive.Backup = mounted\n");
    EXPECT_THAT(surroundings.makePowerSources()->descriptions(),
                ElementsAre(PowerSourceDescription{40, 100, "Battery Power", false}));
    EXPECT_EQ(surroundings.makeThermalStateMonitor()->state(), ThermalState::fair);
    EXPECT_THAT(surroundings.makeDisplays()->online().value(), ElementsAre(Display{.isBuiltIn = false}));
    EXPECT_THAT(surroundings.makeRunningApplications()->identifiers(), ElementsAre("a"));
    EXPECT_THAT(surroundings.makeVolumes()->mounted(),
                ElementsAre(Volume{"/Volumes/Backup", "Backup", false, true}));
}

TEST_F(ScenarioSurroundingsTest, TellOfABatteryThatChargesUntilItIsFull) {
    const auto sources = surroundings.makePowerSources();
    EXPECT_THAT(sources->descriptions(), IsEmpty());
    write("battery = 99");
    EXPECT_THAT(sources->descriptions(), ElementsAre(PowerSourceDescription{99, 100, "AC Power", true}));
    write("battery = 100");
    EXPECT_THAT(sources->descriptions(), ElementsAre(PowerSourceDescription{100, 100, "AC Power", false}));
    write("");
    EXPECT_THAT(sources->descriptions(), IsEmpty());
}

TEST_F(ScenarioSurroundingsTest, AnnounceWhatChangesInTheFileAndOnlyThat) {
    const auto thermal = surroundings.makeThermalStateMonitor();
    const auto displays = surroundings.makeDisplays();
    const auto applications = surroundings.makeRunningApplications();
    const auto onThermal = thermal->observe(note("thermal"));
    const auto onDisplays = displays->observe(note("displays"));
    const auto onApplications = applications->observe(note("applications"));

    write("thermal = serious\n");
    EXPECT_THAT(std::exchange(notes, {}), ElementsAre("thermal"));
    write("thermal = serious\ndisplays = built-in external\n");
    EXPECT_THAT(std::exchange(notes, {}), ElementsAre("displays"));
    write("thermal = serious\ndisplays = built-in external\napplication.a = running\n");
    EXPECT_THAT(std::exchange(notes, {}), ElementsAre("applications"));
    write("thermal = serious\ndisplays = built-in external\napplication.a = running\nload = 50\n");
    EXPECT_THAT(notes, IsEmpty());
    write("");
    EXPECT_THAT(notes, ElementsAre("thermal", "displays", "applications"));
}

TEST_F(ScenarioSurroundingsTest, LetADriveHangUntilItIsToldToAnswer) {
    const auto volumes = surroundings.makeVolumes();
    write("drive.Backup = hangs\ndrive.Films = mounted\n");
    volumes->touch("/Volumes/Backup", note("Backup"));
    volumes->touch("/Volumes/Films", note("Films"));
    time.advance(1min);
    EXPECT_THAT(notes, ElementsAre("Films"));
    write("drive.Backup = mounted\n");
    time.settle();
    EXPECT_THAT(notes, ElementsAre("Films", "Backup"));
    EXPECT_TRUE(volumes->isMounted("/Volumes/Backup"));
    EXPECT_FALSE(volumes->isMounted("/Volumes/Films"));
}

TEST_F(ScenarioSurroundingsTest, StayAsTheyAreWhenTheFileIsWrong) {
    const auto sources = surroundings.makePowerSources();
    write("battery = 40\n");
    write("battery = 30\npower = solar\n");
    EXPECT_EQ(sources->descriptions().front()->currentCapacity, 40);
    EXPECT_THAT(log.lines(), ElementsAre("Simulation: mac.conf:2: power is mains or battery, not \"solar\"; "
                                         "the file is not applied"));
}

}  // namespace
}  // namespace corvane
