#include "platform/linux/desktop/HelperRequest.h"

#include <string_view>

#include <sdbus-c++/Error.h>

#include "platform/linux/StatusCodec.h"

namespace corvane {

namespace {

constexpr std::size_t longestText = 65536;

}  // namespace

HelperAnswer readTextAnswer(sdbus::Message& reply) {
    bool ok = false;
    // Stays in the message: nothing is copied before its length is known to be fine.
    char* text = nullptr;
    reply >> ok >> text;
    if (text == nullptr || std::string_view(text).size() > longestText) {
        throw sdbus::Error("org.freedesktop.DBus.Error.InconsistentMessage", "There is no text.");
    }
    return TextAnswer{ok, text};
}

HelperAnswer readStatusAnswer(sdbus::Message& reply) {
    return fromBus(reply);
}

}  // namespace corvane
