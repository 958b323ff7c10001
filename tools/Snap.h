#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

/// One snapshot of a repository.
struct Snap
{
    QString id; ///< full; the identity
    QString shortID;
    QDateTime date;
    QStringList paths; ///< folders that it holds
    QString host;      ///< machine that it came from

    bool operator==(const Snap &) const = default;

    /// The answer of `restic snapshots --json`, newest first; absent for anything else. Entries
    /// without an id or a date are left out.
    static std::optional<QList<Snap>> listFrom(const QString &json);
};
