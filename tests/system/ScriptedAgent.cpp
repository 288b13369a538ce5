// Stands for a user at an authentication prompt of polkit's: runs a command and answers what it is asked for.
//
//   scripted-agent password=WORD | late-password=WORD | cancel | silence   COMMAND [ARGUMENT...]
//
// A late password is given when COMMAND has ended and there is something to read on standard input.
//
// Prints each prompt as "prompt: ACTION: MESSAGE" on standard error, in the language of $LANG. Exits with the
// status of COMMAND. A wrong password is given once.

#include <QProcess>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include <fmt/format.h>
#include <pwd.h>
#include <sdbus-c++/sdbus-c++.h>
#include <sys/wait.h>
#include <unistd.h>

namespace corvane {
namespace {

constexpr std::string_view passwordPrefix = "password=";
constexpr std::string_view latePasswordPrefix = "late-password=";
constexpr const char* objectPath = "/de/tavrin/corvane/ScriptedAgent";
constexpr const char* agentInterface = "org.freedesktop.PolicyKit1.AuthenticationAgent";
constexpr const char* checkerProgram = "/usr/lib/polkit-1/polkit-agent-helper-1";

using Details = std::map<std::string, std::string>;
using Identity = sdbus::Struct<std::string, std::map<std::string, sdbus::Variant>>;
using Identities = std::vector<Identity>;

/// Gives a password to polkit's own program that checks it and tells polkit.
void authenticate(const std::string& cookie, std::string_view password) {
    QProcess checker;
    checker.start(checkerProgram, {QString::fromUtf8(getpwuid(getuid())->pw_name)});
    checker.write((cookie + '\n').c_str());
    while (checker.waitForReadyRead()) {
        while (checker.canReadLine()) {
            if (checker.readLine().startsWith("PAM_PROMPT_ECHO_OFF")) {
                checker.write(fmt::format("{}\n", password).c_str());
            }
        }
    }
    checker.waitForFinished();
}

class ScriptedAgent {
public:
    explicit ScriptedAgent(std::string answer)
        : answer_(std::move(answer)), connection_(sdbus::createSystemBusConnection()) {
        object_ = sdbus::createObject(*connection_, objectPath);
        object_->registerMethod("BeginAuthentication")
            .onInterface(agentInterface)
            .implementedAs([this](sdbus::Result<>&& result, const std::string& action,
                                  const std::string& message, const std::string& /*icon*/,
                                  const Details& /*details*/, const std::string& cookie,
                                  const Identities& /*identities*/) {
                fmt::print(stderr, "prompt: {}: {}\n", action, message);
                reply(std::move(result), cookie);
            });
        object_->registerMethod("CancelAuthentication")
            .onInterface(agentInterface)
            .implementedAs([](const std::string& /*cookie*/) { fmt::print(stderr, "prompt taken away\n"); });
        object_->finishRegistration();
        connection_->enterEventLoopAsync();
    }

    /// Answers for what this process asks for.
    void serve(pid_t process) {
        const std::map<std::string, sdbus::Variant> subject{
            {"pid", sdbus::Variant(static_cast<std::uint32_t>(process))},
            {"start-time", sdbus::Variant(std::uint64_t{0})}};
        const char* language = std::getenv("LANG");
        sdbus::createProxy(*connection_, "org.freedesktop.PolicyKit1",
                           "/org/freedesktop/PolicyKit1/Authority")
            ->callMethod("RegisterAuthenticationAgent")
            .onInterface("org.freedesktop.PolicyKit1.Authority")
            .withArguments(Identity("unix-process", subject),
                           std::string(language == nullptr ? "C" : language), std::string(objectPath));
    }

    /// Answers what is still open. The command has ended.
    void answerLate() {
        if (answer_.starts_with(latePasswordPrefix)) {
            std::getchar();
            const std::lock_guard lock(mutex_);
            for (Unanswered& prompt : unanswered_) {
                answer(std::move(prompt), latePasswordPrefix);
            }
        }
    }

private:
    struct Unanswered {
        sdbus::Result<> result;
        std::string cookie;
    };

    void reply(sdbus::Result<>&& result, const std::string& cookie) {
        if (answer_ == "cancel") {
            result.returnError(sdbus::Error("org.freedesktop.PolicyKit1.Error.Cancelled", "dismissed"));
        } else if (answer_.starts_with(passwordPrefix)) {
            answer({std::move(result), cookie}, passwordPrefix);
        } else {
            const std::lock_guard lock(mutex_);
            unanswered_.push_back({std::move(result), cookie});
        }
    }

    void answer(Unanswered prompt, std::string_view prefix) const {
        authenticate(prompt.cookie, std::string_view(answer_).substr(prefix.size()));
        prompt.result.returnResults();
    }

    std::string answer_;
    std::unique_ptr<sdbus::IConnection> connection_;
    std::unique_ptr<sdbus::IObject> object_;
    std::mutex mutex_;
    std::vector<Unanswered> unanswered_;
};

/// A command that waits to be released before it begins.
class HeldCommand {
public:
    explicit HeldCommand(char** words) {
        int ends[2];
        if (pipe(ends) != 0 || (process_ = fork()) < 0) {
            std::perror("scripted-agent");
            std::exit(1);
        }
        if (process_ == 0) {
            close(ends[1]);
            char released = 0;
            const bool isReleased = read(ends[0], &released, 1) == 1;
            close(ends[0]);
            if (isReleased) {
                execvp(words[0], words);
            }
            _exit(1);
        }
        close(ends[0]);
        release_ = ends[1];
    }
    HeldCommand(const HeldCommand&) = delete;
    HeldCommand& operator=(const HeldCommand&) = delete;
    ~HeldCommand() = default;

    [[nodiscard]] pid_t process() const { return process_; }

    int run() {
        int status = 0;
        if (write(release_, "", 1) != 1 || waitpid(process_, &status, 0) != process_) {
            return 1;
        }
        return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
    }

private:
    pid_t process_ = -1;
    int release_ = -1;
};

int run(int argumentCount, char** arguments) {
    const std::string answer = argumentCount > 2 ? arguments[1] : "";
    if (answer != "cancel" && answer != "silence" && !answer.starts_with(passwordPrefix) &&
        !answer.starts_with(latePasswordPrefix)) {
        fmt::print(stderr,
                   "usage: scripted-agent password=WORD|late-password=WORD|cancel|silence COMMAND...\n");
        return 64;
    }
    HeldCommand command(arguments + 2);
    try {
        ScriptedAgent agent(answer);
        agent.serve(command.process());
        const int status = command.run();
        agent.answerLate();
        return status;
    } catch (const sdbus::Error& error) {
        fmt::print(stderr, "scripted-agent: {}\n", error.what());
        return 1;
    }
}

}  // namespace
}  // namespace corvane

int main(int argumentCount, char** arguments) {
    return corvane::run(argumentCount, arguments);
}
