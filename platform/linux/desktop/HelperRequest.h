#pragma once

#include <variant>

#include <sdbus-c++/Message.h>

#include "platform/HelperCalls.h"

namespace corvane {

/// What a call says, and how its reply is read.
struct HelperRequest {
    /// A literal.
    const char* member;
    /// The one argument, if the member has one.
    std::variant<std::monostate, double, bool> argument;
    /// Reads the reply's arguments; throws sdbus::Error when they have another form. What comes after them is
    /// the caller's to look at.
    HelperAnswer (*read)(sdbus::Message& reply);
};

/// Readers of the two forms of reply. Both refuse text of more than 64 KiB.
HelperAnswer readTextAnswer(sdbus::Message& reply);
HelperAnswer readStatusAnswer(sdbus::Message& reply);

}  // namespace corvane
