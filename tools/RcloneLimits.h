#pragma once

#include <QStringList>

/// How long rclone may try when a short answer is waited for.
namespace RcloneLimits {

/// The options of every short query of a remote.
inline QStringList shortQuery()
{
    return {QStringLiteral("--contimeout"), QStringLiteral("10s"),
            QStringLiteral("--timeout"),    QStringLiteral("20s"),
            QStringLiteral("--retries"),    QStringLiteral("1")};
}

} // namespace RcloneLimits
