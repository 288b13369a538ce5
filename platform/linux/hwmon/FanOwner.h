#pragma once

#include <cstdint>

namespace corvane {

/// Who drives a fan: the helper's service, or a diagnostic command. A diagnostic command leaves the helper's
/// fans alone, except for handing them back.
enum class FanOwner : std::uint8_t { helper, diagnostics };

}  // namespace corvane
