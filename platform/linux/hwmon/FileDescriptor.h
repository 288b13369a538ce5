#pragma once

#include <utility>

#include <unistd.h>

namespace corvane {

/// Owns an open file descriptor.
class FileDescriptor {
public:
    /// Takes what an `open` call answered; negative stands for no file.
    explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    FileDescriptor& operator=(FileDescriptor&&) = delete;
    ~FileDescriptor() {
        if (isOpen()) {
            ::close(descriptor_);
        }
    }

    [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }
    [[nodiscard]] int get() const { return descriptor_; }

private:
    int descriptor_;
};

}  // namespace corvane
