#include <cstdint>

#include <cxxabi.h>
#include <unwind.h>

/// Objective-C++ names its own function for unwinding; only C++ exceptions are thrown here.

extern "C" {
_Unwind_Reason_Code __gxx_personality_v0(int version, _Unwind_Action actions, std::uint64_t exceptionClass,
                                         _Unwind_Exception* exception, _Unwind_Context* context);
_Unwind_Reason_Code __gnustep_objcxx_personality_v0(int version, _Unwind_Action actions,
                                                    std::uint64_t exceptionClass,
                                                    _Unwind_Exception* exception, _Unwind_Context* context);
}

_Unwind_Reason_Code __gnustep_objcxx_personality_v0(int version, _Unwind_Action actions,
                                                    std::uint64_t exceptionClass,
                                                    _Unwind_Exception* exception, _Unwind_Context* context) {
    return __gxx_personality_v0(version, actions, exceptionClass, exception, context);
}
