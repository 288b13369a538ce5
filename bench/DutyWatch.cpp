#include "bench/DutyWatch.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace corvane {

DutyWatch::DutyWatch(const std::string& file)
    : file_(::open(file.c_str(), O_RDONLY | O_CLOEXEC)), notices_(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {
    if (!file_.isOpen() || !notices_.isOpen() ||
        ::inotify_add_watch(notices_.get(), file.c_str(), IN_MODIFY) < 0) {
        throw std::system_error(errno, std::generic_category(), file);
    }
}

std::optional<DutyWatch::Clock::time_point> DutyWatch::nextWrite(Clock::time_point deadline) {
    const auto wait = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    pollfd waiting{notices_.get(), POLLIN, 0};
    if (::poll(&waiting, 1, static_cast<int>(std::max<std::int64_t>(wait, 0))) <= 0) {
        return std::nullopt;
    }
    const Clock::time_point now = Clock::now();
    forget();
    return now;
}

void DutyWatch::forget() {
    std::array<char, 4096> notices{};
    while (::read(notices_.get(), notices.data(), notices.size()) > 0) {
    }
}

int DutyWatch::duty() const {
    std::array<char, 8> text{};
    const ssize_t count = ::pread(file_.get(), text.data(), text.size() - 1, 0);
    return count > 0 ? static_cast<int>(std::strtol(text.data(), nullptr, 10)) : -1;
}

}  // namespace corvane
