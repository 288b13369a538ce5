#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/simulated/RecordingLog.h"
#include "platform/simulated/ScenarioReader.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

/// What the test says the file is; counts how often it is looked at.
struct FakeFile {
    std::optional<ScenarioSource::Stamp> stamp;
    std::optional<std::string> text;
    int looks = 0;
    int reads = 0;

    void write(std::string content) {
        stamp = {.modified = stamp ? stamp->modified + 1 : 1, .size = content.size()};
        text = std::move(content);
    }
};

class FakeSource final : public ScenarioSource {
public:
    explicit FakeSource(FakeFile& file) : file_(file) {}
    std::optional<Stamp> stamp() override {
        ++file_.looks;
        return file_.stamp;
    }
    std::optional<std::string> read(std::size_t limit) override {
        ++file_.reads;
        return file_.text ? std::optional(file_.text->substr(0, limit)) : std::nullopt;
    }

private:
    FakeFile& file_;
};

class ScenarioReaderTest : public testing::Test {
protected:
    std::optional<Scenario> nextLook() {
        now += ScenarioReader::interval;
        return reader.changed(now);
    }

    BootTime now{1h};
    FakeFile file;
    RecordingLog log;
    ScenarioReader reader{std::make_unique<FakeSource>(file), "mac.conf", log};
};

TEST_F(ScenarioReaderTest, TheFileMayBeMissingAtFirst) {
    EXPECT_FALSE(reader.changed(now));
    EXPECT_THAT(log.lines(), IsEmpty());
    file.write("load = 10");
    const auto scenario = nextLook();
    ASSERT_TRUE(scenario);
    EXPECT_EQ(scenario->load, 10.0);
}

TEST_F(ScenarioReaderTest, ReadsOnlyWhatHasChanged) {
    file.write("load = 10");
    EXPECT_TRUE(reader.changed(now));
    EXPECT_FALSE(nextLook());
    EXPECT_EQ(file.reads, 1);
    file.write("load = 20");
    EXPECT_TRUE(nextLook());
    EXPECT_EQ(file.reads, 2);
}

TEST_F(ScenarioReaderTest, LooksAtMostEveryTenthOfASecond) {
    for (int i = 0; i < 1000; ++i) {
        reader.changed(now);
        now += 1ms;
    }
    EXPECT_EQ(file.looks, 10);
}

TEST_F(ScenarioReaderTest, ReportsAMistakeOncePerChange) {
    file.write("load = 10\nlode = 20\n");
    for (int i = 0; i < 10; ++i) {
        EXPECT_FALSE(nextLook());
    }
    EXPECT_THAT(log.lines(),
                ElementsAre("Simulation: mac.conf:2: nothing is called \"lode\"; the file is not applied"));
    file.write("load = many\n");
    EXPECT_FALSE(nextLook());
    EXPECT_EQ(log.lines().size(), 2U);
    file.write("load = 10\n");
    EXPECT_TRUE(nextLook());
    EXPECT_EQ(log.lines().size(), 2U);
}

TEST_F(ScenarioReaderTest, AFileThatIsGoneChangesNothing) {
    file.write("load = 10");
    EXPECT_TRUE(reader.changed(now));
    const auto stamp = file.stamp;
    file.stamp.reset();
    EXPECT_FALSE(nextLook());
    file.stamp = stamp;
    EXPECT_FALSE(nextLook());
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(ScenarioReaderTest, ReportsAFileThatCannotBeRead) {
    file.write("load = 10");
    file.text.reset();
    EXPECT_FALSE(nextLook());
    EXPECT_FALSE(nextLook());
    EXPECT_THAT(log.lines(), ElementsAre("Simulation: mac.conf: it cannot be read; the file is not applied"));
}

TEST_F(ScenarioReaderTest, ReportsAFileThatIsTooLong) {
    file.write(std::string(10 * largestScenario, '#'));
    EXPECT_FALSE(nextLook());
    EXPECT_THAT(log.lines(),
                ElementsAre("Simulation: mac.conf: it has more than 65536 bytes; the file is not applied"));
}

}  // namespace
}  // namespace corvane
