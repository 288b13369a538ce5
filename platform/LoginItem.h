#pragma once

namespace corvane {

/// Whether the application starts when the user logs in. Main loop; a call takes as long as a small file.
class LoginItem {
public:
    LoginItem() = default;
    LoginItem(const LoginItem&) = delete;
    LoginItem& operator=(const LoginItem&) = delete;
    virtual ~LoginItem() = default;

    /// As the system has it now: the user may have changed it elsewhere.
    [[nodiscard]] virtual bool isEnabled() const = 0;

    /// True when it is so now; where it was so already, nothing is touched, unless the system would start
    /// another program than this one. What fails is logged as "Corvane login-item toggle failed: " and the
    /// error.
    virtual bool setEnabled(bool on) = 0;
};

}  // namespace corvane
