#pragma once

#include "tools/Restic.h"

#include <QString>

#include <optional>

#include <sys/types.h>

/// What lies under a local repository, from the beginning of a run to its end: a disk that goes
/// meanwhile may leave a folder in its place that can be written to. Remote repositories have none,
/// and theirs never changes.
class RepositoryVolume
{
public:
    /// Looks at what is there now.
    explicit RepositoryVolume(const Restic &restic);

    /// Whether the same still is.
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
