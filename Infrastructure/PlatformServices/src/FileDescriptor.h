#pragma once

#include <utility>

#include <unistd.h>

/// Owns an open file descriptor, or none (negative), and closes it at the end of the scope.
class FileDescriptor {
public:
    explicit FileDescriptor(int descriptor) : m_descriptor(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : m_descriptor(other.release()) {}
    ~FileDescriptor()
    {
        if (isOpen())
            close(m_descriptor);
    }

    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }

    bool isOpen() const { return m_descriptor >= 0; }
    int get() const { return m_descriptor; }
    /// Gives the descriptor away: the caller closes it.
    int release() { return std::exchange(m_descriptor, -1); }

private:
    int m_descriptor;
};
