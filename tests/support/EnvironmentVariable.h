#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace corvane {

/// Sets a variable of this process while it lives; null unsets it.
class EnvironmentVariable {
public:
    EnvironmentVariable(std::string name, const char* value) : name_(std::move(name)) {
        if (const char* former = std::getenv(name_.c_str())) {
            former_ = former;
        }
        set(value);
    }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;
    ~EnvironmentVariable() { set(former_ ? former_->c_str() : nullptr); }

private:
    void set(const char* value) const {
        if (value == nullptr) {
            unsetenv(name_.c_str());
        } else {
            setenv(name_.c_str(), value, 1);
        }
    }

    std::string name_;
    std::optional<std::string> former_;
};

}  // namespace corvane
