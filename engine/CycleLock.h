#pragma once

#include "tools/FileDescriptor.h"

#include <QString>

#include <optional>

#include <tl/expected.hpp>

/// The right to run a cycle on this machine, held from acquire() until the object is destroyed.
///
/// It is a lock on the open file backup.lock of the support folder. The system drops it when the
/// process dies, however it dies, so there is no stale lock. The file itself stays.
class CycleLock
{
public:
    /// Fails with the reason, in the user's words, when the file can't be opened; without a reason
    /// while a different cycle runs.
    static tl::expected<CycleLock, std::optional<QString>> acquire();

    /// Why a cycle could not run or could record nothing, in the user's words; absent when it
    /// could. For the window, since such a cycle has no way to report it.
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
