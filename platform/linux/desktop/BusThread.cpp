#include "platform/linux/desktop/BusThread.h"

#include <string>
#include <utility>

#include <asio/post.hpp>
#include <pthread.h>

namespace corvane {

namespace {

constexpr std::size_t longestThreadName = 15;

}  // namespace

BusThread::BusThread(std::string_view label) : thread_([this] { context_.run(); }) {
    pthread_setname_np(thread_.native_handle(), std::string(label.substr(0, longestThreadName)).c_str());
}

BusThread::~BusThread() {
    asio::post(context_, [this] { context_.stop(); });
    thread_.join();
}

void BusThread::post(std::function<void()> work) {
    asio::post(context_, std::move(work));
}

}  // namespace corvane
