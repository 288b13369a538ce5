#pragma once

#include <utility>

#include <unistd.h>

namespace corvane {

/// An open file; closed with the object. -1: none.
class FileDescriptor {
public:
    explicit FileDescriptor(int number) : number_(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    FileDescriptor& operator=(FileDescriptor&&) = delete;
    ~FileDescriptor() {
        if (number_ >= 0) {
            close(number_);
        }
    }

    [[nodiscard]] bool isOpen() const { return number_ >= 0; }
    [[nodiscard]] int get() const { return number_; }

    /// Whoever takes it closes it; this has none any more.
    [[nodiscard]] int release() { return std::exchange(number_, -1); }

private:
    int number_;
};

}  // namespace corvane
