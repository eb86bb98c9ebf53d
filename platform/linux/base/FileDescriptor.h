// Owns a file descriptor and closes it.
#pragma once

#include <unistd.h>

#include <utility>

namespace vorlane::platform {

class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int number) : number_(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}

    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        if (this == &other) return *this;
        reset();
        number_ = std::exchange(other.number_, -1);
        return *this;
    }

    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    ~FileDescriptor() { reset(); }

    explicit operator bool() const { return number_ >= 0; }
    int get() const { return number_; }

    void reset()
    {
        if (number_ >= 0) (void)close(number_);
        number_ = -1;
    }

private:
    int number_ = -1;
};

}  // namespace vorlane::platform
