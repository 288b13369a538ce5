#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// Text that reads as `text` between the tags of XML, or of a markup that borrows its escapes. Not for
/// attribute values: quotes stay as they are. UTF-8, any thread.
[[nodiscard]] std::string xmlText(std::string_view text);

}  // namespace corvane
