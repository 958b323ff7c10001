#pragma once

#include "tools/Restic.h"

#include <QList>
#include <QString>

#include <optional>

/// What is known of a destination's repository.
struct RepoInfo
{
    QList<Snap> snapshots;        ///< of this machine, newest first
    std::optional<qint64> size;   ///< bytes of the whole repository
    std::optional<QString> error; ///< shown as it stands
    bool loading = false;

    bool operator==(const RepoInfo &) const = default;
};
