#include <chrono>
#include <filesystem>
#include <future>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <unistd.h>

#include "platform/linux/desktop/QtSerialQueue.h"
#include "platform/linux/desktop/UserSingleInstance.h"
#include "platform/posix/FileDescriptor.h"
#include "platform/simulated/RecordingLog.h"
#include "tests/support/Notes.h"
#include "tests/support/QtThread.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const Start first{};
const Start second{.role = StartRole::second, .error = {}};

/// One end of a connection, made without any of the code under test.
class Peer {
public:
    explicit Peer(const fs::path& path) : descriptor_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        const sockaddr_un address = addressOf(path);
        EXPECT_EQ(connect(get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    }

    [[nodiscard]] int get() const { return descriptor_.get(); }

    static sockaddr_un addressOf(const fs::path& path) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.string().copy(address.sun_path, sizeof address.sun_path - 1);
        return address;
    }

private:
    FileDescriptor descriptor_;
};

/// A socket that is listened to while this lives, and is left behind.
class Listener {
public:
    explicit Listener(const fs::path& path) : descriptor_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        const sockaddr_un address = Peer::addressOf(path);
        EXPECT_EQ(bind(descriptor_.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(listen(descriptor_.get(), 1), 0);
    }

private:
    FileDescriptor descriptor_;
};

/// A start of the application with a main loop of its own.
class Application {
public:
    Application(const fs::path& folder, Log& log, std::chrono::milliseconds patience = testPatience)
        : thread_(
              [this, folder, &log, patience] {
                  queue_.emplace();
                  instance_.emplace(folder, log, patience);
                  start_ = instance_->claim([this] { opened_.add(1); });
              },
              [this] {
                  instance_.reset();
                  queue_.reset();
              }) {}

    [[nodiscard]] const Start& start() const { return start_; }
    /// One note for each time that the panel was to be opened.
    [[nodiscard]] const Notes<int>& opened() const { return opened_; }
    QtSerialQueue& queue() { return *queue_; }

private:
    Start start_;
    Notes<int> opened_;
    std::optional<QtSerialQueue> queue_;
    std::optional<UserSingleInstance> instance_;
    QtThread thread_;
};

class UserSingleInstanceTest : public testing::Test {
protected:
    /// A start whose main loop never runs.
    Start startBriefly(std::chrono::milliseconds patience = testPatience) {
        UserSingleInstance instance(folder / "corvane", log, patience);
        return instance.claim([] {});
    }

    const TemporaryFolder folder;
    RecordingLog log;
};

TEST_F(UserSingleInstanceTest, LetsTheFirstStartGoOn) {
    const Application application(folder / "corvane", log);
    EXPECT_EQ(application.start(), first);
    EXPECT_EQ(application.opened().size(), 0U);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(UserSingleInstanceTest, HasEachLaterStartOpenTheFirstOnesPanelAndEnd) {
    const Application application(folder / "corvane", log);
    EXPECT_EQ(startBriefly(), second);
    EXPECT_EQ(application.opened().size(), 1U) << "it is open when the second start ends";
    EXPECT_EQ(startBriefly(), second);
    EXPECT_EQ(application.opened().size(), 2U);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(UserSingleInstanceTest, LetsTheNextStartGoOnWhenTheFirstHasEnded) {
    { const Application former(folder / "corvane", log); }
    const Application next(folder / "corvane", log);
    EXPECT_EQ(next.start(), first);
    EXPECT_EQ(startBriefly(), second);
    EXPECT_EQ(next.opened().size(), 1U);
}

TEST_F(UserSingleInstanceTest, TakesOverWhatAKilledFirstOneLeft) {
    ASSERT_TRUE(fs::create_directory(folder / "corvane"));
    fs::permissions(folder / "corvane", fs::perms::owner_all);
    folder.write("corvane/lock", "");
    { const Listener killed(folder / "corvane" / "open"); }
    ASSERT_TRUE(fs::exists(folder / "corvane" / "open"));
    const Application next(folder / "corvane", log);
    EXPECT_EQ(next.start(), first);
    EXPECT_EQ(startBriefly(), second);
    EXPECT_EQ(next.opened().size(), 1U);
}

TEST_F(UserSingleInstanceTest, WaitsForAFirstOneThatIsBusy) {
    Application application(folder / "corvane", log);
    std::promise<void> mayGoOn;
    application.queue().async([&] { mayGoOn.get_future().wait(); });
    auto later = std::async(std::launch::async, [this] { return startBriefly(); });
    EXPECT_EQ(later.wait_for(0ms), std::future_status::timeout);
    mayGoOn.set_value();
    EXPECT_EQ(later.get(), second);
    EXPECT_EQ(application.opened().size(), 1U);
}

TEST_F(UserSingleInstanceTest, GivesUpOnAFirstOneThatDoesNotAnswer) {
    Application application(folder / "corvane", log);
    std::promise<void> mayGoOn;
    application.queue().async([&] { mayGoOn.get_future().wait(); });
    EXPECT_EQ(startBriefly(100ms), (Start{.role = StartRole::unanswered,
                                          .error = "Corvane is already running but does not answer."}));
    mayGoOn.set_value();
}

TEST_F(UserSingleInstanceTest, GivesUpOnAFirstOneThatDoesNotListen) {
    const Application application(folder / "corvane", log);
    fs::remove(folder / "corvane" / "open");
    EXPECT_EQ(startBriefly(100ms).role, StartRole::unanswered);
}

TEST_F(UserSingleInstanceTest, AnswersWhoeverConnectsWhateverElseTheyDo) {
    const Application application(folder / "corvane", log);
    const std::string garbage(100'000, 'x');
    std::vector<std::unique_ptr<Peer>> peers;
    for (int i = 0; i < 200; ++i) {
        peers.push_back(std::make_unique<Peer>(folder / "corvane" / "open"));
        send(peers.back()->get(), garbage.data(), garbage.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (i % 2 == 0) {
            peers.back().reset();
        }
    }
    EXPECT_EQ(startBriefly(), second);
    EXPECT_EQ(application.opened().size(), 201U);
}

TEST_F(UserSingleInstanceTest, HeedsNobodyButItsUser) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can be somebody else";
    }
    const Application application(folder / "corvane", log);
    // Nobody else gets as far as this otherwise.
    for (const fs::path& path : {folder.path(), folder / "corvane", folder / "corvane" / "open"}) {
        fs::permissions(path, fs::perms::all);
    }
    char answer = 0;
    ssize_t size = -1;
    std::thread([&] {
        // Of this thread alone.
        constexpr uid_t nobody = 65534;
        constexpr uid_t same = static_cast<uid_t>(-1);
        ASSERT_EQ(syscall(SYS_setresuid, same, nobody, same), 0);
        const Peer peer(folder / "corvane" / "open");
        size = recv(peer.get(), &answer, sizeof answer, 0);
    }).join();
    EXPECT_EQ(size, 0) << "turned away without an answer";
    EXPECT_EQ(application.opened().size(), 0U);
}

TEST_F(UserSingleInstanceTest, KeepsOthersOut) {
    const Application application(folder / "corvane", log);
    struct stat info {};
    ASSERT_EQ(stat((folder / "corvane").c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777U, 0700U);
    ASSERT_EQ(stat((folder / "corvane" / "lock").c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777U, 0600U);
}

TEST_F(UserSingleInstanceTest, GoesOnWithALineInTheLogWhereItCannotFindOut) {
    fs::create_directory(folder / "real");
    fs::permissions(folder / "real", fs::perms::owner_all);
    fs::create_directory_symlink(folder / "real", folder / "link");
    fs::create_directory(folder / "open to all");
    fs::permissions(folder / "open to all", fs::perms::all);
    folder.write("file", "");
    fs::create_directory(folder / "blocked");
    fs::permissions(folder / "blocked", fs::perms::owner_all);
    fs::create_directory(folder / "blocked" / "lock");
    for (const char* name : {"link", "open to all", "file", "no/such", "blocked"}) {
        log.clear();
        const Application application(folder / name, log);
        EXPECT_EQ(application.start(), first) << name;
        EXPECT_THAT(log.lines(), ElementsAre(HasSubstr("Other instances go unnoticed: "))) << name;
    }
    EXPECT_TRUE(fs::is_empty(folder / "real")) << "a link is not followed";
}

TEST_F(UserSingleInstanceTest, GoesOnUnheardWhereTheSocketsPathIsTooLong) {
    const fs::path longFolder = folder / std::string(200, 'x');
    const Application application(longFolder, log);
    EXPECT_EQ(application.start(), first);
    EXPECT_THAT(log.lines(), ElementsAre(HasSubstr("the path is too long")));
    UserSingleInstance later(longFolder, log, 100ms);
    EXPECT_EQ(later.claim([] {}).role, StartRole::unanswered);
}

TEST(UserSingleInstanceFolder, IsTheSessionsOrOneOfTheUsersOwn) {
    std::map<std::string, std::string> variables;
    const auto folder = [&] {
        return instanceFolder([&](const char* name) {
            const auto found = variables.find(name);
            return found == variables.end() ? nullptr : found->second.c_str();
        });
    };
    const std::string own = fmt::format("corvane-{}", geteuid());
    EXPECT_EQ(folder(), "/tmp/" + own);
    variables["TMPDIR"] = "/var/tmp";
    EXPECT_EQ(folder(), "/var/tmp/" + own);
    variables["XDG_RUNTIME_DIR"] = "relative";
    EXPECT_EQ(folder(), "/var/tmp/" + own);
    variables["XDG_RUNTIME_DIR"] = "/run/user/1000";
    EXPECT_EQ(folder(), "/run/user/1000/corvane");
}

}  // namespace
}  // namespace corvane
