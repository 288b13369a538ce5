#include "tests/hostile/RawCaller.h"

#include <cerrno>
#include <chrono>
#include <system_error>

#include "platform/linux/HelperBus.h"

namespace corvane {

namespace {

constexpr std::chrono::microseconds longestWait = std::chrono::seconds(5);

void require(int result, const std::string& what) {
    if (result < 0) {
        throw std::system_error(-result, std::generic_category(), what);
    }
}

}  // namespace

RawCaller::RawCaller(const std::string& bus) {
    sd_bus* made = nullptr;
    require(sd_bus_new(&made), bus);
    bus_.reset(made);
    require(sd_bus_set_address(made, bus == "system" ? "unix:path=/run/dbus/system_bus_socket" : bus.c_str()),
            bus);
    require(sd_bus_set_bus_client(made, 1), bus);
    require(sd_bus_negotiate_fds(made, 1), bus);
    require(sd_bus_start(made), bus);
}

BusMessage RawCaller::methodCall(const char* path, const char* interface, const char* member) {
    sd_bus_message* made = nullptr;
    require(
        sd_bus_message_new_method_call(bus_.get(), &made, HelperAddress::busName, path, interface, member),
        member);
    return BusMessage(made);
}

BusMessage RawCaller::signal(const char* path, const char* interface, const char* member) {
    sd_bus_message* made = nullptr;
    require(sd_bus_message_new_signal(bus_.get(), &made, path, interface, member), member);
    BusMessage message(made);
    require(sd_bus_message_set_destination(made, HelperAddress::busName), member);
    return message;
}

bool RawCaller::send(sd_bus_message* message, bool isAnswered) {
    std::uint64_t cookie = 0;
    return sd_bus_send(bus_.get(), message, isAnswered ? &cookie : nullptr) >= 0;
}

void RawCaller::drain() {
    while (sd_bus_process(bus_.get(), nullptr) > 0) {
    }
}

void RawCaller::flush() {
    sd_bus_flush(bus_.get());
}

bool RawCaller::call(sd_bus_message* message) {
    return sd_bus_call(bus_.get(), message, static_cast<std::uint64_t>(longestWait.count()), nullptr,
                       nullptr) >= 0;
}

}  // namespace corvane
