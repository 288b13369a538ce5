#include <filesystem>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/stat.h>

#include "platform/linux/hwmon/FanJournal.h"
#include "platform/posix/FileDescriptor.h"
#include "tests/platform/linux/hwmon/HwmonRig.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* line = "fan\tdiagnostics\tdevices/a b/c\tit8628\t3\tpwm=70\tenable=2\tend";

JournalEntry entryOf(const std::string& device) {
    return {{{device, "it8628"}, 3}, FanOwner::diagnostics, {{"pwm", 70}, {"enable", 2}}};
}

TEST(JournalEntry, IsOneLineThatReadsBack) {
    EXPECT_EQ(formatJournalEntry(entryOf("devices/a b/c")), line);
    EXPECT_EQ(parseJournalEntry(line), entryOf("devices/a b/c"));
}

TEST(JournalEntry, IsNotReadFromADamagedLine) {
    for (const std::string text : {
             "",
             "fan",
             "fan\tdiagnostics\tdevices/a\tit8628\t3\tpwm=70\tenable=2",
             "fan\tdiagnostics\tdevices/a\tit8628\t3\tpwm=70\tenable=2\ten",
             "fan\tnobody\tdevices/a\tit8628\t3\tpwm=70\tend",
             "fan\thelper\t\tit8628\t3\tpwm=70\tend",
             "fan\thelper\tdevices/a\t\t3\tpwm=70\tend",
             "fan\thelper\tdevices/a\tit8628\tthree\tpwm=70\tend",
             "fan\thelper\tdevices/a\tit8628\t3\tend",
             "fan\thelper\tdevices/a\tit8628\t3\tpwm=\tend",
             "fan\thelper\tdevices/a\tit8628\t3\tpwm=7x\tend",
             "fan\thelper\tdevices/a\tit8628\t3\t=7\tend",
             "fan\thelper\tdevices/a\tit8628\t3\tpwm\tend",
             "fan\thelper\tdevices/a\tit8628\t3\tpwm=99999999999999999999\tend",
             "fan\thelper\ta\tb\t3\ta=1\ta=1\ta=1\ta=1\ta=1\ta=1\ta=1\ta=1\ta=1\ta=1\ta=1\ta=1\ta=1\tend",
         }) {
        EXPECT_EQ(parseJournalEntry(text), std::nullopt) << text;
    }
}

class FanJournalTest : public testing::Test {
protected:
    bool append(FanJournal& to, const std::string& device) {
        return to.update([&](FanJournal::Entries& entries) {
            entries.push_back(entryOf(device));
            return true;
        });
    }

    TemporaryFolder folder;
    RecordingLog log;
    FanJournal journal{folder.path("run/fans"), log};
};

TEST_F(FanJournalTest, MakesItsFolderAndKeepsBothToItsOwner) {
    EXPECT_TRUE(append(journal, "a"));
    namespace fs = std::filesystem;
    EXPECT_EQ(fs::status(folder.path("run")).permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(folder.path("run/fans")).permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_FALSE(fs::exists(folder.path("run/fans.new")));
}

TEST_F(FanJournalTest, SeesWhatAnotherProcessWrote) {
    EXPECT_THAT(journal.entries(), IsEmpty());
    FanJournal other(folder.path("run/fans"), log);
    EXPECT_TRUE(append(other, "a"));
    EXPECT_THAT(journal.entries(), ElementsAre(entryOf("a")));
    EXPECT_TRUE(append(journal, "b"));
    EXPECT_THAT(other.entries(), ElementsAre(entryOf("a"), entryOf("b")));
    EXPECT_EQ(other.find({{"b", "it8628"}, 4}), nullptr);
    EXPECT_NE(other.find({{"b", "it8628"}, 3}), nullptr);
}

TEST_F(FanJournalTest, DoesNotWriteWhatItsChangeTurnedDown) {
    EXPECT_TRUE(append(journal, "a"));
    EXPECT_FALSE(journal.update([](FanJournal::Entries& entries) {
        entries.clear();
        return false;
    }));
    EXPECT_THAT(journal.entries(), ElementsAre(entryOf("a")));
}

TEST_F(FanJournalTest, DoesNotWaitForAProcessThatHoldsTheLock) {
    EXPECT_TRUE(append(journal, "a"));
    {
        const FileDescriptor lock(::open(folder.path("run/fans.lock").c_str(), O_RDWR | O_CLOEXEC));
        ASSERT_EQ(::flock(lock.get(), LOCK_EX), 0);
        EXPECT_FALSE(append(journal, "b"));
    }
    EXPECT_TRUE(append(journal, "c"));
    EXPECT_THAT(journal.entries(), ElementsAre(entryOf("a"), entryOf("c")));
}

TEST_F(FanJournalTest, HasAnEnd) {
    for (std::size_t i = 0; i < FanJournal::maxEntries; ++i) {
        EXPECT_TRUE(append(journal, std::to_string(i)));
    }
    EXPECT_FALSE(append(journal, "one more"));
    EXPECT_EQ(journal.entries().size(), FanJournal::maxEntries);
}

TEST_F(FanJournalTest, SkipsDamagedLinesAndUsesTheRest) {
    folder.write("fans", std::string("garbage\n\n") + line + "\nfan\thelper\tcut");
    FanJournal damaged(folder.path("fans"), log);
    EXPECT_THAT(damaged.entries(), ElementsAre(entryOf("devices/a b/c")));
    EXPECT_THAT(log.lines(), ElementsAre("Corvane daemon: fan journal: 3 damaged lines skipped"));
}

TEST_F(FanJournalTest, ReadsNoMoreThanItsBound) {
    std::string huge(1 << 20, 'x');
    huge = std::string(line) + "\n" + huge;
    folder.write("fans", huge);
    FanJournal damaged(folder.path("fans"), log);
    EXPECT_THAT(damaged.entries(), ElementsAre(entryOf("devices/a b/c")));
}

TEST_F(FanJournalTest, FollowsNoLink) {
    folder.write("elsewhere", "untouched");
    ASSERT_EQ(::symlink(folder.path("elsewhere").c_str(), folder.path("fans.new").c_str()), 0);
    FanJournal linked(folder.path("fans"), log);
    EXPECT_FALSE(append(linked, "a"));
    EXPECT_EQ(folder.read("elsewhere"), "untouched");
}

}  // namespace
}  // namespace corvane
