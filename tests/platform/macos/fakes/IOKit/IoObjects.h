#pragma once

#include <IOKit/IOKitLib.h>

namespace corvane {

/// The kernel's objects that this process has a name for. One that is never given back fails the test, and so
/// does giving back what there is not. Any thread.
enum class IoObjectKind { service, connection };

[[nodiscard]] io_object_t makeIoObject(IoObjectKind kind);
[[nodiscard]] bool isIoObject(io_object_t object, IoObjectKind kind);

}  // namespace corvane
