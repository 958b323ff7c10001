#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringView>

#include <optional>

/// One of the messages that restic writes with --json while it works: a JSON object on a line of
/// its own. What the fields mean is up to the command (ResticBackup has those of a backup).
struct ResticMessage
{
    QString type;       ///< its `message_type`, such as "status", "summary", "error" or "node"
    QJsonObject fields; ///< all of the object

    /// Absent for a line that is no such message: plain words, damaged JSON, an object without a
    /// type.
    static std::optional<ResticMessage> parse(QStringView line);
};
