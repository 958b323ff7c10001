#pragma once

#include "tools/Restic.h"

#include <QString>

#include <optional>

#include <sys/types.h>

/// The mounted file system that holds a local repository, compared between the beginning and the
/// end of a run: a disk that is unplugged meanwhile may leave a writable folder in its place. A
/// remote repository has none and always counts as still there.
class RepositoryVolume
{
public:
    /// Notes what is mounted now, and remembers the disk in state.json.
    explicit RepositoryVolume(const Restic &restic);

    /// Whether the same is still mounted.
    [[nodiscard]] bool isStillThere() const;

private:
    struct Volume
    {
        QString mountPoint;
        dev_t device = 0;

        bool operator==(const Volume &) const = default;
    };

    [[nodiscard]] std::optional<Volume> present() const;

    QString m_repository; ///< empty for a remote one
    std::optional<Volume> m_volume;
};
