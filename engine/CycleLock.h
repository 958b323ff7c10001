#pragma once

#include "tools/FileDescriptor.h"

#include <QString>

#include <optional>

#include <tl/expected.hpp>

/// The right to run a cycle on this machine, held from acquire() to the object's end.
///
/// It is a lock on the open file backup.lock of the support folder, so the system drops it when the
/// process dies, however it dies: there is no stale lock. The file itself stays for good.
class CycleLock
{
public:
    /// Fails with the reason, as the user reads it, when the file can't be opened; without any when
    /// another cycle runs.
    static tl::expected<CycleLock, std::optional<QString>> acquire();

    /// Why a cycle would end at once and silently, or keep nothing of what it did; absent when it
    /// wouldn't. For the window, which can inform the user: a cycle can't.
    static std::optional<QString> fault();

    ~CycleLock();
    CycleLock(CycleLock &&) noexcept = default;
    CycleLock &operator=(CycleLock &&) noexcept = default;
    CycleLock(const CycleLock &) = delete;
    CycleLock &operator=(const CycleLock &) = delete;

private:
    explicit CycleLock(FileDescriptor descriptor);

    FileDescriptor m_descriptor;
};
