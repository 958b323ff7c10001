#pragma once

#include <QString>

/// A disk of a few kilobytes mounted on a folder, seen by this thread and its children only, and
/// unmounted with the object.
class SmallDisk
{
public:
    /// Makes the folder first if need be.
    explicit SmallDisk(const QString &folder, int kilobytes = 64);
    ~SmallDisk();
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;
    SmallDisk(SmallDisk &&) = delete;
    SmallDisk &operator=(SmallDisk &&) = delete;

    /// Whether it could be mounted; a test that needs it must fail otherwise.
    [[nodiscard]] bool isMounted() const { return m_mounted; }

    /// Fills it to the last byte.
    void fill() const;
    /// Gives back what fill() took.
    void makeRoom() const;
    /// Makes it read-only; false when that failed.
    [[nodiscard]] bool makeReadOnly() const;

private:
    QString m_folder;
    bool m_mounted = false;
};
