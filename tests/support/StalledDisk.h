#pragma once

#include <QString>

/// A disk behind a network that has gone: every call on it waits, until letGo() or
/// this object's end. Only this process and its children see it.
class StalledDisk
{
public:
    /// Mounts it on a folder.
    explicit StalledDisk(QString folder);
    ~StalledDisk();
    StalledDisk(const StalledDisk &) = delete;
    StalledDisk &operator=(const StalledDisk &) = delete;
    StalledDisk(StalledDisk &&) = delete;
    StalledDisk &operator=(StalledDisk &&) = delete;

    /// Whether it is mounted; a test that needs it must fail otherwise.
    [[nodiscard]] bool isMounted() const { return m_mounted; }
    /// Makes every call on it fail from now on.
    void letGo();

private:
    QString m_folder;
    int m_server = -1; ///< where the kernel asks for answers that never come
    bool m_mounted = false;
};
