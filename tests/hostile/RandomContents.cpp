#include "tests/hostile/RandomContents.h"

#include <array>
#include <limits>
#include <vector>

#include "platform/linux/HelperBus.h"

namespace corvane {

namespace {

constexpr std::string_view basicTypes = "ybnqiuxtdsog";
constexpr std::array members{"pingWithReply", "getStatusWithReply", "setFanFloorWithPercentWithReply",
                             "stopBoostWithReply", "setLidStayAwakeWithReply"};
constexpr std::size_t longText = 1 << 20;

}  // namespace

std::string RandomContents::letters(std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += static_cast<char>('a' + pick(26));
    }
    return text;
}

std::string RandomContents::member() {
    return oneIn(4) ? letters(1 + pick(255)) : members.at(pick(members.size()));
}

std::string RandomContents::interface() {
    constexpr std::array others{"org.freedesktop.DBus.Properties", "org.freedesktop.DBus.Introspectable",
                                "org.freedesktop.DBus.Peer", "org.freedesktop.DBus.ObjectManager"};
    if (oneIn(4)) {
        return letters(3) + "." + letters(1 + pick(200));
    }
    return oneIn(4) ? others.at(pick(others.size())) : HelperAddress::interface;
}

std::string RandomContents::path() {
    if (oneIn(4)) {
        std::string path;
        for (std::uint64_t part = 0; part <= pick(40); ++part) {
            path += "/" + letters(1 + pick(8));
        }
        return path;
    }
    return oneIn(8) ? "/" : HelperAddress::objectPath;
}

double RandomContents::anyDouble() {
    constexpr std::array odd{
        std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
        -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::denorm_min(),
        std::numeric_limits<double>::max(),       -0.0};
    return oneIn(2) ? odd.at(pick(odd.size())) : static_cast<double>(pick(400)) - 100;
}

std::string RandomContents::anyText() {
    return letters(oneIn(200) ? longText : pick(40));
}

void RandomContents::appendBasic(sd_bus_message* message, char type) {
    const std::uint64_t number = random_();
    const double real = anyDouble();
    const int boolean = static_cast<int>(pick(2));
    const std::string text = type == 'o' ? path() : type == 'g' ? "a{sv}" : anyText();
    switch (type) {
        case 'd':
            sd_bus_message_append_basic(message, type, &real);
            break;
        case 'b':
            sd_bus_message_append_basic(message, type, &boolean);
            break;
        case 's':
        case 'o':
        case 'g':
            sd_bus_message_append_basic(message, type, text.c_str());
            break;
        default:
            sd_bus_message_append_basic(message, type, &number);
            break;
    }
}

void RandomContents::appendArray(sd_bus_message* message) {
    constexpr std::string_view types = "ynqiuxt";
    const char type = types.at(pick(types.size()));
    const std::vector<std::uint64_t> numbers(oneIn(50) ? longText / 8 : pick(64), random_());
    sd_bus_message_append_array(message, type, numbers.data(), numbers.size() * sizeof(std::uint64_t));
}

void RandomContents::appendVariant(sd_bus_message* message, int depth) {
    if (depth > 0 && oneIn(2)) {
        sd_bus_message_open_container(message, SD_BUS_TYPE_VARIANT, "v");
        appendVariant(message, depth - 1);
    } else {
        const char type = basicTypes.at(pick(basicTypes.size()));
        const std::array contents{type, '\0'};
        sd_bus_message_open_container(message, SD_BUS_TYPE_VARIANT, contents.data());
        appendBasic(message, type);
    }
    sd_bus_message_close_container(message);
}

void RandomContents::appendStruct(sd_bus_message* message) {
    sd_bus_message_open_container(message, SD_BUS_TYPE_STRUCT, "sdu");
    appendBasic(message, 's');
    appendBasic(message, 'd');
    appendBasic(message, 'u');
    sd_bus_message_close_container(message);
}

void RandomContents::append(sd_bus_message* message, int depth) {
    switch (pick(8)) {
        case 0:
            return appendArray(message);
        case 1:
            return appendVariant(message, depth);
        case 2:
            return appendStruct(message);
        default:
            return appendBasic(message, basicTypes.at(pick(basicTypes.size())));
    }
}

void RandomContents::fill(sd_bus_message* message, int depth) {
    for (std::uint64_t value = 0, count = pick(5); value < count; ++value) {
        append(message, depth);
    }
}

}  // namespace corvane
