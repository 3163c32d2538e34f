#pragma once

#include <unistd.h>

#include <utility>

namespace vantrel {

/// Owns a file descriptor and closes it.
class FileDescriptor {
  public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        if (this != &other) {
            reset();
            descriptor_ = std::exchange(other.descriptor_, -1);
        }
        return *this;
    }
    ~FileDescriptor() { reset(); }

    /// Closes the descriptor at once.
    void reset() {
        if (isOpen()) {
            close(std::exchange(descriptor_, -1));
        }
    }

    [[nodiscard]] int get() const { return descriptor_; }
    [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }

  private:
    int descriptor_ = -1;
};

}  // namespace vantrel
