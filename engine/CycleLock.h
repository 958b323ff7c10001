#pragma once

#include "tools/FileDescriptor.h"

#include <optional>

/// The right to run a cycle on this machine, held from acquire() to the object's end.
///
/// It is a lock on the open file backup.lock of the support folder, so the system drops it when the
/// process dies, however it dies: there is no stale lock. The file itself stays for good.
class CycleLock
{
public:
    /// Absent when another cycle runs, or the file can't be opened.
    static std::optional<CycleLock> acquire();

    ~CycleLock();
    CycleLock(CycleLock &&) noexcept = default;
    CycleLock &operator=(CycleLock &&) noexcept = default;
    CycleLock(const CycleLock &) = delete;
    CycleLock &operator=(const CycleLock &) = delete;

private:
    explicit CycleLock(FileDescriptor descriptor);

    FileDescriptor m_descriptor;
};
