#include "platform/linux/LinuxMainLoop.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include <asio/post.hpp>
#include <sys/signalfd.h>
#include <unistd.h>

#include "platform/posix/HeldSignals.h"

namespace corvane {

void LinuxMainLoop::holdTerminationSignals() {
    blockTerminationSignals();
}

void LinuxMainLoop::onTerminationSignal(std::function<void()> handler) {
    handler_ = std::move(handler);
    const int descriptor = signalfd(-1, &terminationSignals(), SFD_NONBLOCK | SFD_CLOEXEC);
    if (descriptor < 0) {
        throw std::system_error(errno, std::system_category(), "no signals");
    }
    signals_.assign(descriptor);
    awaitSignal();
}

void LinuxMainLoop::awaitSignal() {
    signals_.async_wait(asio::posix::stream_descriptor::wait_read, [this](const std::error_code& error) {
        signalfd_siginfo signal{};
        if (error) {
            return;
        }
        if (read(signals_.native_handle(), &signal, sizeof signal) == sizeof signal) {
            handler_();
        }
        awaitSignal();
    });
}

int LinuxMainLoop::run() {
    context_.run();
    return status_.value_or(0);
}

void LinuxMainLoop::exit(int status) {
    asio::post(context_, [this, status] {
        if (!status_) {
            status_ = status;
        }
        context_.stop();
    });
}

}  // namespace corvane
