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

    /// Changes nothing where it is so already. What fails is logged, and shows in `isEnabled`.
    virtual void setEnabled(bool on) = 0;
};

}  // namespace corvane
