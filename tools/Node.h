#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

/// A file or folder inside a snapshot.
struct Node
{
    QString path; ///< full, inside the snapshot
    QString name;
    bool isDir = false;
    qint64 size = 0;                   ///< bytes; 0 when restic gives none
    std::optional<QDateTime> modified; ///< absent when restic gives none

    bool operator==(const Node &) const = default;

    /// The content of `folder` from the lines of `restic ls --json`: folders first, each group in
    /// the natural order of names. Lines that are no node are left out.
    static QList<Node> listedIn(const QString &folder, const QString &lines);

    /// The answer of `restic find --json`, in the natural order of names; absent for anything else.
    static std::optional<QList<Node>> foundIn(const QString &json);
};
