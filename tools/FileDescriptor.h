#pragma once

#include <utility>

#include <unistd.h>

/// Owns one descriptor of the operating system and closes it.
class FileDescriptor
{
public:
    FileDescriptor() = default;
    /// Takes over a descriptor; a negative one means none.
    explicit FileDescriptor(int descriptor)
        : m_descriptor(descriptor)
    {
    }
    FileDescriptor(FileDescriptor &&other) noexcept
        : m_descriptor(std::exchange(other.m_descriptor, -1))
    {
    }
    FileDescriptor &operator=(FileDescriptor &&other) noexcept
    {
        if (this != &other) {
            close();
            m_descriptor = std::exchange(other.m_descriptor, -1);
        }
        return *this;
    }
    FileDescriptor(const FileDescriptor &) = delete;
    FileDescriptor &operator=(const FileDescriptor &) = delete;
    ~FileDescriptor() { close(); }

    [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }
    [[nodiscard]] int get() const { return m_descriptor; }

    /// Closes at once; an error on closing is dropped.
    void close()
    {
        if (m_descriptor >= 0) {
            ::close(std::exchange(m_descriptor, -1));
        }
    }

private:
    int m_descriptor = -1;
};
