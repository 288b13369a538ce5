#pragma once

#include <string_view>

@class NSURL;

namespace corvane {

/// An https address as it may be handed to others: well-formed, with a host, without user name and password.
/// nil for anything else.
NSURL* httpsUrl(std::string_view text);

}  // namespace corvane
